#pragma once

#include "recordset/recordset.h"

#include <QPushButton>
#include <QWidget>

#include <functional>

class QLineEdit;

/// Moves as the four buttons do: 0 first, 1 previous (the first row at the beginning), 2 next (the last row
/// at the end), 3 last. A cursor that is closed or shows no row stays.
void moveInRecordset(const RecordsetPtr& recordset, int button);

/// The four buttons "<<", "<", ">", ">>" around a position box.
class MoveButtons : public QWidget {
    Q_OBJECT

public:
    /// The buttons get the object names "name(0)" to "name(3)"; the box is `positionName`, none where that is
    /// empty.
    MoveButtons(const QString& name, const QString& positionName, QWidget* parent = nullptr);

    /// The four buttons, first to last.
    QWidgetList buttons() const { return {m_buttons.begin(), m_buttons.end()}; }
    void setPosition(const QString& text);
    /// What the tool tips call one step: "条" as they open, "页".
    void setUnit(const QString& unit);
    /// Makes the position box as wide as this text.
    void setPositionWidth(const QString& text);
    void setButtonsEnabled(bool enabled);

Q_SIGNALS:
    void pressed(int button);

private:
    std::vector<QPushButton*> m_buttons;
    QLineEdit* m_position = nullptr;
};
