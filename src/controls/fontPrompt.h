#pragma once

#include <QColor>
#include <QDialog>
#include <QFont>

class QCheckBox;
class QComboBox;
class QLabel;
class QListWidget;

/// A font as the user chooses it, with its colour.
struct FontChoice {
    QFont font;
    QColor colour = Qt::black;
};

/// The names of fonts to choose from: those with substitutes on this machine first, each in place of the
/// substitute that it is shown with, then the other families.
QStringList fontNames();

/// The dialog behind a font choice. It starts with the font that it is given, effects and colour too, and
/// what the user leaves alone comes back as it was.
class FontDialog : public QDialog {
    Q_OBJECT

public:
    FontDialog(const QString& title, const FontChoice& start, QWidget* parent);

    FontChoice choice() const;

private:
    QWidget* buildNames();
    QWidget* buildStyles();
    QWidget* buildSizes();
    QWidget* buildEffects();
    void askColour();
    void showSample();

    FontChoice m_start;
    QColor m_colour;
    QListWidget* m_names = nullptr;
    QListWidget* m_styles = nullptr;
    QComboBox* m_sizes = nullptr;
    QCheckBox* m_strikethrough = nullptr;
    QCheckBox* m_underline = nullptr;
    QLabel* m_sample = nullptr;
};
