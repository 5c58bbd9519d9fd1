#include "app/shopApplication.h"

#include "app/errorReport.h"

bool ShopApplication::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
        endWithReport(reportText(error, m_databasePath));
    }
}
