#pragma once

#include "recordset/error.h"

/// The number of the run-time error that `action` ends with, 0 if it ends well.
template <typename Action> int errorOf(Action&& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.number();
    }
    return 0;
}
