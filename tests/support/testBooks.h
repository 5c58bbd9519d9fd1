#pragma once

#include "data/schema.h"
#include "data/session.h"
#include "support/printQt.h"

#include <QFile>
#include <QLocale>
#include <QTemporaryDir>

#include <memory>

/// Books of an empty shop in a folder of their own, with a session on them and a fixed day. Rows are put in
/// by statements of the storage engine; cursors that are open do not see them.
class TestBooks {
public:
    TestBooks()
        : TestBooks(QString()) {}
    /// In: a file to be copied; without one the shop is empty.
    explicit TestBooks(const QString& from) {
        if (from.isEmpty())
            createDatabase(path());
        else
            QFile::copy(from, path());
        m_session = std::make_unique<Session>(path());
        m_session->appPath = m_folder.path();
        m_session->today = [] { return QDate(2004, 11, 21); };
    }

    QString path() const { return m_folder.filePath(QStringLiteral("VelmorClientBank.mdb")); }
    Session& session() { return *m_session; }

    void execute(const QString& sql) { m_session->cn.execute(sql); }

    /// Changes rows behind the program's back: every cursor opened afterwards reads its table from the file.
    void changeBehind(const QString& sql) {
        const QStringList tables = m_session->cn.tables();
        execute(sql);
        for (const QString& table : tables)
            m_session->cn.forgetImage(table);
    }

    /// Result of a query as text: columns parted by "|", rows by ";", Null as "Null".
    QString stored(const QString& sql) {
        QStringList rows;
        Statement statement = m_session->cn.prepare(sql);
        while (statement.step()) {
            QStringList cells;
            for (int i = 0; i < statement.columnCount(); ++i)
                cells << (statement.isNull(i) ? QStringLiteral("Null") : statement.text(i));
            rows << cells.join(u'|');
        }
        return rows.join(u';');
    }

    void addClient(const QString& number, const QString& company = {}, const QString& contact = {}) {
        const QString serial = stored(QStringLiteral("SELECT count(*) + 1 FROM clientTable"));
        changeBehind(QStringLiteral("INSERT INTO clientTable (流水号, 客户编号, 单位名称, 联系人, 消费合计, "
                                    "购买数, 差额利润, 差额利润率) "
                                    "VALUES (%1, '%2', '%3', '%4', 0, 0, 0, '0')")
                         .arg(serial, number, company, contact));
    }
    void addProduct(const QString& number, const QString& name, double quantity, double cost, double price,
                    const QString& discount = QStringLiteral("100")) {
        const QString serial = stored(QStringLiteral("SELECT count(*) + 1 FROM productTable"));
        const QString values =
            QStringLiteral(
                "(%1, '2004-01-05', '%2', '%3', '规格%2', '产地%2', '厂家%2', '个', %4, %5, '%6', %7)")
                .arg(serial, number, name)
                .arg(exact(quantity), exact(cost), discount, exact(price));
        changeBehind(QStringLiteral("INSERT INTO productTable VALUES ") + values);
        changeBehind(QStringLiteral("INSERT INTO product_Bank VALUES ") + values);
    }
    void addLine(const QString& order, const QString& client, const QString& product, const QString& date,
                 double quantity, double paid, double cost) {
        const QString serial = stored(QStringLiteral("SELECT count(*) + 1 FROM buyList"));
        changeBehind(
            QStringLiteral("INSERT INTO buyList VALUES (%1, '%2', '%3', '%4', '%5', '货', '', '', '', 1, "
                           "'个', %6, %7, '100', %7, %8, %9)")
                .arg(serial, order, client, product, date)
                .arg(exact(quantity), exact(paid), exact(cost), exact(paid - cost * quantity)));
    }

private:
    /// As many digits as give the same number back.
    static QString exact(double number) {
        return QString::number(number, 'g', QLocale::FloatingPointShortest);
    }

    QTemporaryDir m_folder;
    std::unique_ptr<Session> m_session;
};
