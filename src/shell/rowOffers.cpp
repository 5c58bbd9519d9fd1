#include "shell/rowOffers.h"

#include "controls/offerList.h"
#include "controls/recordBoxes.h"

void offerRows(RecordBox* box, QWidget* form, RowSuggestions& rows, std::function<void(RowId row)> go) {
    auto* list = new OfferList(box, form, [&rows](const QString& typed) {
        std::vector<OfferList::Offer> offers;
        for (const SuggestedRow& each : rows.offer(typed))
            offers.push_back({each.row, each.texts.join(QStringLiteral("  ")), each.texts.first()});
        return offers;
    });
    QObject::connect(list, &OfferList::taken, form, std::move(go));
}
