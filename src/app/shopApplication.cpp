#include "app/shopApplication.h"

#include "app/errorReport.h"
#include "recordset/error.h"

bool ShopApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const ActionEnded& ended) {
        if (onActionEnded)
            onActionEnded(ended.text());
        return true;
    } catch (const std::exception& error) {
        endWithReport(reportText(error, m_databasePath), m_databasePath,
                      m_opened ? WayBack::Reopen : WayBack::Restore);
    }
}
