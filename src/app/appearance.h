#pragma once

class QApplication;

/// Style, palette, font and the substitutes of the two report fonts.
void setAppearance(QApplication& application);
