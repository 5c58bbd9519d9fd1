#include "import/partReader.h"

#include "import/tableReader.h"

PartReader::PartReader(std::unique_ptr<QIODevice> part)
    : m_part(std::move(part))
    , m_xml(m_part.get()) {
    child(); // the document's one element
}

QXmlStreamReader::TokenType PartReader::next() {
    const QXmlStreamReader::TokenType token = m_xml.readNext();
    switch (token) {
    case QXmlStreamReader::Invalid:
        throw ImportError(QStringLiteral("工作簿已损坏。"));
    case QXmlStreamReader::DTD:
    case QXmlStreamReader::EntityReference:
        throw ImportError(QStringLiteral("工作簿里有不合规定的实体或文档类型，不能读取。"));
    case QXmlStreamReader::StartElement:
        if (++m_depth > kDeepest)
            throw ImportError(QStringLiteral("工作簿的嵌套太深，不能读取。"));
        break;
    case QXmlStreamReader::EndElement:
        --m_depth;
        break;
    default:
        break;
    }
    return token;
}

bool PartReader::child() {
    for (;;) {
        switch (next()) {
        case QXmlStreamReader::StartElement:
            m_attributes = m_xml.attributes();
            return true;
        case QXmlStreamReader::EndElement:
        case QXmlStreamReader::EndDocument:
            return false;
        default:
            break;
        }
    }
}

void PartReader::skip() {
    for (int depth = 1; depth > 0;) {
        const QXmlStreamReader::TokenType token = next();
        if (token == QXmlStreamReader::StartElement)
            ++depth;
        else if (token == QXmlStreamReader::EndElement || token == QXmlStreamReader::EndDocument)
            --depth;
    }
}

QString PartReader::text() {
    QString text;
    for (int depth = 1; depth > 0;) {
        const QXmlStreamReader::TokenType token = next();
        if (token == QXmlStreamReader::Characters)
            text += m_xml.text();
        else if (token == QXmlStreamReader::StartElement)
            ++depth;
        else if (token == QXmlStreamReader::EndElement || token == QXmlStreamReader::EndDocument)
            --depth;
    }
    return text;
}

QString PartReader::attribute(QStringView name) const {
    for (const QXmlStreamAttribute& each : m_attributes)
        if (each.name() == name)
            return each.value().toString();
    return {};
}
