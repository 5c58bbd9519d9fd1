#pragma once

#include "shell/view.h"

/// The help window: the user guide from the text file beside the program, and the program's version.
class manualFm1 : public TopWindow {
    Q_OBJECT

public:
    /// `guidePath`: the text file, UTF-8. One that cannot be read leaves the page empty. `warning`: what else
    /// the user must know of this system; mostly empty.
    explicit manualFm1(const QString& guidePath, const QString& warning = {});
    bool standsOverMain() const override { return true; }

protected:
    bool endsByEscape() const override { return true; }
};
