#pragma once

#include <QIODevice>
#include <QXmlStreamReader>

#include <functional>
#include <memory>

/// Reads a part of a workbook element by element, by their names without a name space. What a workbook never
/// holds is refused, with ImportError: a document type and with it every entity of its own, elements nested
/// without end, and XML that is none.
class PartReader {
public:
    static constexpr int kDeepest = 256;

    explicit PartReader(std::unique_ptr<QIODevice> part);

    /// The next child of the element that is open, which becomes the open one. False at the end of that
    /// element, which then is closed. Texts and what else stands between them is passed over.
    bool child();
    /// Passes over the rest of the element that is open.
    void skip();
    /// The texts within the element that is open, its end included.
    QString text();
    QStringView name() const { return m_xml.name(); }
    bool is(QStringView name) const { return m_xml.name() == name; }
    const QXmlStreamAttributes& attributes() const { return m_attributes; }
    /// An attribute by its name, whatever its name space; empty without it.
    QString attribute(QStringView name) const;

private:
    QXmlStreamReader::TokenType next();

    std::unique_ptr<QIODevice> m_part;
    QXmlStreamReader m_xml;
    QXmlStreamAttributes m_attributes;
    int m_depth = 0;
};
