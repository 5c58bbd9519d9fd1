#pragma once

#include "shell/displayView.h"

/// The views of all customers and of all sold goods, and of what one customer, one order or one product comes
/// to.
std::span<const DisplayDescription> drillDisplays();
