#include "recordset/error.h"

#include <cmath>

RuntimeError::RuntimeError(int number, QString text, QString statement)
    : m_number(number)
    , m_text(std::move(text))
    , m_statement(std::move(statement)) {
    const QString tail = m_statement.isEmpty() ? QString() : QStringLiteral(" [%1]").arg(m_statement);
    m_what = QStringLiteral("%1: %2%3").arg(m_number).arg(m_text, tail).toUtf8();
}

DatabaseLost::DatabaseLost(const QString& text, Outcome outcome, bool ofTheFile)
    : m_what(text.toUtf8())
    , m_outcome(outcome)
    , m_ofTheFile(ofTheFile) {}

ActionEnded::ActionEnded(const QString& text, bool booked)
    : m_what(text.toUtf8())
    , m_booked(booked) {}

void fail(int number, const QString& text, const QString& statement) {
    throw RuntimeError(number, text, statement);
}

double checkedFinite(double value) {
    if (!std::isfinite(value))
        fail(ErrorNumber::Overflow, QStringLiteral("溢出"));
    return value;
}
