#pragma once

#include "shell/displayView.h"

#include <span>

/// The display views of the stock and of its movements.
std::span<const DisplayDescription> stockDisplays();
