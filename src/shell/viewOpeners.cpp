#include "shell/viewOpeners.h"

void addOpeners(CommandTable& commands, ViewHost& host, std::span<const ViewOpener> openers) {
    for (const ViewOpener& opener : openers)
        commands.add(QString::fromUtf16(opener.command),
                     [&host, view = QString::fromUtf16(opener.view)](IgnoringErrors& errors) {
                         errors.run([&] { host.showFromMenu(view); });
                     });
}
