#pragma once

#include "data/session.h"

#include <span>

/// A button of stock-in that leads to another view, and what must hold before it goes there.
struct Gateway {
    int command; // number of the button
    const char16_t* caption;
    const char16_t* view;
    bool refusedWhileAdding; // not while a new product is entered
    bool passesErrors;       // a failed statement is passed over, else it is a run-time error
    bool stopsDisplay;       // the boxes of stock-in show no row any more
    /// Makes the view's cursors ready; false where there is nothing to show.
    bool (*prepare)(Session& session, QStringView view);
};

std::span<const Gateway> gateways();

/// The gateway of a button, null for another number.
const Gateway* findGateway(int command);
