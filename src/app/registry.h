#pragma once

class MDIForm1;
class Prompts;

/// Registers every view, window and command of the program with the main window.
void registerAll(MDIForm1& main, Prompts& prompts);
