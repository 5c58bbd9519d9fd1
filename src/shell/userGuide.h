#pragma once

#include <QString>
#include <QStringList>

#include <vector>

/// The user guide as it stands in its text file, taken apart: what a help window needs to lead through it.
/// A line with "===" or "---" below it is a heading, and so is what a line begins with in 【】. The guide
/// remains plain text: places are places in it.
class UserGuide {
public:
    enum class Level { Title, Chapter, Section };
    struct Section {
        Level level;
        QString name;       // a chapter's without its number
        QString heading;    // as it stands
        qsizetype start;    // of its heading
        qsizetype textFrom; // behind the heading
        qsizetype end;
    };
    /// A name of a section in “” somewhere else in the guide.
    struct Link {
        qsizetype start; // behind the quote
        qsizetype length;
        int target; // a section
    };

    explicit UserGuide(const QString& text);

    const QString& text() const { return m_text; }
    const std::vector<Section>& sections() const { return m_sections; }
    const std::vector<Link>& links() const { return m_links; }
    /// The section of a name, a 【】 before a chapter; -1 without one.
    int find(const QString& name) const;
    /// The innermost section at a place; -1 before the first.
    int sectionAt(qsizetype place) const;
    /// What the guide tells to look up (见“…”) and has no section for.
    QStringList missingTargets() const;
    /// Where a word begins, whatever its case, in the order of the text. None for an empty word.
    std::vector<qsizetype> hits(const QString& word) const;

private:
    void takeHeadings();
    void takeBrackets(qsizetype at, const QString& line);
    void endSections();
    void takeLinks();

    QString m_text;
    std::vector<Section> m_sections;
    std::vector<Link> m_links;
};

/// The name of the guide's section about a view, a window or a report; of the guide's beginning for a name
/// that is none of them.
QString helpTopic(const QString& window);
