#pragma once

#include <QListWidget>

#include <functional>
#include <vector>

class RecordBox;

/// A list below a search box that offers what fits to the text as it is typed. It never has the focus and
/// takes nothing from the box: while nothing in it is chosen every key does what it did without the list, but
/// for the arrow down, which goes into it, and Escape, which closes it. Enter or a click take what is chosen.
class OfferList : public QListWidget {
    Q_OBJECT

public:
    struct Offer {
        quint32 id;
        QString text;
        QString boxText; // what the box holds, selected, when the offer is taken
    };
    using Source = std::function<std::vector<Offer>(const QString& typed)>;

    /// `form`: the widget around the box over which the list may lie.
    OfferList(RecordBox* box, QWidget* form, Source source);

Q_SIGNALS:
    void taken(quint32 id);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void offer(const QString& typed);
    void place();
    bool keyPressed(int key);
    void take(const QListWidgetItem* item);

    RecordBox* m_box;
    Source m_source;
};
