#pragma once

#include "shell/viewHost.h"

class Prompts;

/// Lets the user choose an order of the customer in hand, to print it or to show it; a customer without lines
/// is told. The orders are those of the choice of data in showSource. Throws RuntimeError.
void chooseOrder(ViewHost& host, Prompts& prompts, bool print);
