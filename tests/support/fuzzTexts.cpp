#include "support/fuzzTexts.h"

#include "recordset/dialect.h"
#include "recordset/error.h"
#include "recordset/textDate.h"
#include "recordset/textNumber.h"
#include "support/scratchFile.h"

namespace {

template <typename Action> void attempt(Action&& action) {
    try {
        action();
    } catch (const RuntimeError&) {
        // A refusal is a good answer.
    }
}

struct Shop {
    Shop()
        : file(QStringLiteral(
              "CREATE TABLE t (流水号 INTEGER, k TEXT(20) COLLATE NOCASE, 数量 REAL, 日期 DATETEXT);"
              "INSERT INTO t VALUES (1,'a',1,'2004-01-05'),(2,'O''N',NULL,NULL),(3,NULL,2.5,'2004-12-31');"))
        , rows(file.open(QStringLiteral("Select * From t"))) {}
    ScratchFile file;
    RecordsetPtr rows;
};

} // namespace

void fuzzText(const QString& text) {
    static Shop shop;
    attempt([&] { shop.rows->setFilter(text); });
    attempt([&] { shop.rows->setSort(text); });
    attempt([&] { shop.rows->Find(text); });
    shop.rows->clearFilter();
    // A condition that the filter takes must also be one that the storage engine understands as rendered.
    attempt(
        [&] { shop.file.open(QStringLiteral("Select * From t Where Not (") + text + QStringLiteral(")")); });
    attempt([&] { parseStatement(text); });
    attempt([&] { val(text); });
    isNumeric(text);
    isDate(text);
    parseDateLiteral(text);
}
