#pragma once

#include "shell/commandTable.h"
#include "shell/viewHost.h"

#include <span>

/// A menu command that does nothing but open its view.
struct ViewOpener {
    const char16_t* command;
    const char16_t* view;
};

void addOpeners(CommandTable& commands, ViewHost& host, std::span<const ViewOpener> openers);
