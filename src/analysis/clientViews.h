#pragma once

#include "shell/displayView.h"

/// The views of customers: those that are evaluated, those of an interval of purchase and of a
/// salesperson, and the salespeople themselves.
std::span<const DisplayDescription> clientDisplays();
