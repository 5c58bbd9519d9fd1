#include "data/workTable.h"

#include "recordset/ignoringErrors.h"

void rebuildWorkTable(Session& session, RecordsetPtr& cursor, const QString& table,
                      const QStringList& statements, IgnoringErrors& errors) {
    if (cursor->isOpen())
        cursor->Close();
    WriteBatch batch(session.cn);
    errors.run([&] { runStatement(session.cn, QStringLiteral("Drop Table ") + table); });
    for (const QString& statement : statements)
        errors.run([&] { runStatement(session.cn, statement); });
    batch.finish();
    errors.run([&] { session.reopen(cursor, QStringLiteral("Select * From ") + table); });
}

void rebuildEmpty(Session& session, RecordsetPtr& cursor, const QString& table, const QString& shapedLike,
                  IgnoringErrors& errors) {
    rebuildWorkTable(session, cursor, table,
                     {QStringLiteral("Select Top 1 * Into %1 From %2").arg(table, shapedLike),
                      QStringLiteral("Delete * From ") + table},
                     errors);
}
