#pragma once

#include <QString>

class QWidget;

/// A short remark beside a widget that goes by itself: for what needs an answer but no message box.
void showHint(QWidget* beside, const QString& text);
