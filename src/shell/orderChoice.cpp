#include "shell/orderChoice.h"

#include "controls/prompts.h"
#include "data/orderInHand.h"

void chooseOrder(ViewHost& host, Prompts& prompts, bool print) {
    Session& session = host.session();
    if (!hasLines(session, session.currentClientNum)) {
        session.buyList->clearFilter();
        return prompts.tell(QStringLiteral("该客户无购物记录！"));
    }
    session.orderIsPrinted = print;
    host.openWindow(QStringLiteral("order_Form_NumFm1"), ViewHost::MainWindow::Disabled);
}
