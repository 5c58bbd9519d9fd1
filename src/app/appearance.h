#pragma once

class QApplication;

/// Style, palette, font, the substitutes of the two report fonts, and Chinese for what the toolkit says by
/// itself, whatever the locale.
void setAppearance(QApplication& application);
