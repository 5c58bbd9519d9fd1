#include "maintenance/importTrial.h"

#include "recordset/shownText.h"
#include "recordset/textNumber.h"

#include <QElapsedTimer>

#include <algorithm>

ImportTrial::ImportTrial(Session& session, const ImportPlan& plan, const SourceRows& rows,
                         std::vector<int> places)
    : m_columns(plan.targetColumns)
    , m_rowCount(rows.rowCount())
    , m_row(rows, std::move(places), targetRecordset(session, plan), numberColumns(*plan.target)) {
    if (plan.target->checksDates)
        m_dateCell = int(m_columns.indexOf(QStringLiteral("日期")));
    m_fates.reserve(std::size_t(m_rowCount));
}

void ImportTrial::run(int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    while (!finished() && clock.elapsed() < milliseconds) {
        const int row = done();
        const Fate fate = look(row);
        m_fates.push_back(fate);
        if (fate != Fate::AsItIs)
            m_remarkable.push_back(row);
        m_refused += fate == Fate::Refused;
    }
}

bool ImportTrial::refusesDate(int row) const {
    return m_dateCell >= 0 && !passesDateTest(m_row.source(row, std::size_t(m_dateCell)));
}

ImportTrial::Fate ImportTrial::look(int row) {
    if (refusesDate(row))
        return Fate::Refused;
    IgnoringErrors errors;
    m_row.make(row, errors);
    Fate fate = errors.number() == 0 ? Fate::AsItIs : Fate::Changed;
    for (std::size_t i = 0; i < m_row.cellCount() && fate == Fate::AsItIs; ++i)
        fate = cellFate(row, i);
    return fate;
}

ImportTrial::Fate ImportTrial::cellFate(int row, std::size_t cell) const {
    const QString text = m_row.source(row, cell);
    const bool asItIs =
        m_row.isNumber(cell) ? text.isEmpty() || isNumeric(text) : text.size() <= m_row.size(cell);
    return asItIs ? Fate::AsItIs : Fate::Changed;
}

QStringList ImportTrial::become(int row) {
    IgnoringErrors errors;
    QStringList texts;
    for (const CellValue& value : m_row.make(row, errors))
        texts << shownText(fieldText(value));
    return texts;
}

QString ImportTrial::cellRemark(int row, std::size_t cell) const {
    const QString column = m_columns[qsizetype(cell)];
    if (m_row.isNumber(cell))
        return QStringLiteral("%1不是数字，只取开头的数").arg(column);
    return QStringLiteral("%1太长，截去 %2 个字")
        .arg(column)
        .arg(m_row.source(row, cell).size() - m_row.size(cell));
}

QString ImportTrial::remark(int row) {
    if (refusesDate(row))
        return QStringLiteral("日期格式不符，导入会在这里停下");
    IgnoringErrors errors;
    m_row.make(row, errors);
    QStringList remarks;
    for (std::size_t i = 0; i < m_row.cellCount(); ++i) {
        if (m_row.refused(i))
            remarks << QStringLiteral("%1存不进，这一格会空着").arg(m_columns[qsizetype(i)]);
        else if (cellFate(row, i) != Fate::AsItIs)
            remarks << cellRemark(row, i);
    }
    return remarks.join(u'；');
}

QString ImportTrial::summary() const {
    const int changed = int(m_remarkable.size()) - m_refused;
    QString text = QStringLiteral("试了 %1 行：%2 行照样导入，%3 行有改动，%4 行不合格。")
                       .arg(done())
                       .arg(done() - changed - m_refused)
                       .arg(changed)
                       .arg(m_refused);
    if (m_refused > 0)
        text += QStringLiteral("有不合格的行时，导入一行也不写入。");
    return text + QStringLiteral("试导入没有写入任何内容。");
}
