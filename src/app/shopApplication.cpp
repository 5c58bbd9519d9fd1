#include "app/shopApplication.h"

#include "app/errorReport.h"
#include "recordset/error.h"

bool ShopApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const ActionEnded& ended) {
        if (!m_opened && !reportStands()) // half-open books are none
            endWithReport(reportText(ended, m_databasePath), m_databasePath, WayBack::Reopen);
        if (onActionEnded)
            onActionEnded(ended.text());
        return true;
    } catch (const std::exception& error) {
        if (reportStands())
            return true;
        // What the file itself did may ask for a backup, at the start whatever was read from it.
        const auto* lost = dynamic_cast<const DatabaseLost*>(&error);
        const bool ofFile = lost ? lost->isOfTheFile() : !m_opened;
        endWithReport(reportText(error, m_databasePath), m_databasePath,
                      ofFile ? WayBack::Restore : WayBack::Reopen);
    }
}
