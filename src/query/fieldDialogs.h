#pragma once

#include "shell/view.h"
#include "shell/viewHost.h"

class Prompts;
class QFormLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

/// A list of fields, a box with the chosen one, "确认" and "返回": what the search and the sort dialog share.
class FieldDialog : public Dialog {
    Q_OBJECT

public:
    void shownAgain() override { fillList(); }

protected:
    FieldDialog(const QString& name, const QString& caption, const QString& hint, ViewHost& host,
                Prompts& prompts);

    /// The fields that the list offers now.
    virtual QStringList fields() = 0;
    virtual void fieldChosen(const QString& /*field*/) {}
    virtual void confirm() = 0;
    void fillList();
    bool eventFilter(QObject* watched, QEvent* event) override;

    ViewHost& m_host;
    Session& m_session;
    Prompts& m_prompts;
    QListWidget* m_list = nullptr;
    QLineEdit* m_field = nullptr;
    QFormLayout* m_form = nullptr;
    QPushButton* m_confirm = nullptr;

private:
    QLayout* buildList();
    QLayout* buildChoice(const QString& hint);
    /// What a click on the list's current field does.
    void choose();

    QLabel* m_empty = nullptr;
};

/// Filters a cursor on a field of the list of searchCode: the one that the opening view hands over in
/// searchSource, or that of showSource.
class searchFm1 : public FieldDialog {
    Q_OBJECT

public:
    searchFm1(ViewHost& host, Prompts& prompts);
    void shownAgain() override;

protected:
    QStringList fields() override;
    void fieldChosen(const QString& field) override;
    void confirm() override;

private:
    /// Takes the cursor that is handed over.
    void takeSource();

    QLineEdit* m_value = nullptr;
    ShowSource m_source = ShowSource::None;
};

/// What the sort dialog does with a field: sorts the cursor of orderCode, and then Order_display.
void sortView(ViewHost& host, const QString& field);

/// Sorts the cursor of orderCode by one of its columns.
class orderFm1 : public FieldDialog {
    Q_OBJECT

public:
    orderFm1(ViewHost& host, Prompts& prompts);

protected:
    QStringList fields() override;
    void confirm() override;
};
