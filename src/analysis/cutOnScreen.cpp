#include "analysis/cutOnScreen.h"

#include "controls/longWork.h"

void showCut(ViewHost& host, const RecordsetPtr& clients, const BestClientsQuestion& question,
             const QString& answer) {
    Session& session = host.session();
    const RowsOfTable cut = cutBestClients(session, clients, question, answer);
    const QPointer<View> view = host.active();
    view->rowsReplaced();
    workAfterPainting(QStringLiteral("正在保存分析结果…"),
                      [&](const Steps& steps) { writeCut(session, cut, question.measure, steps); });
    if (view)
        view->rowsReplaced();
}
