#pragma once

#include "shell/viewHost.h"

class Prompts;

/// The dialogs that search, sort and pick in whatever a view shows.
void registerQuery(ViewHost& host, Prompts& prompts);
