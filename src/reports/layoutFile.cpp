#include "reports/layoutFile.h"

#include "data/ownFiles.h"
#include "export/wholeFile.h"
#include "recordset/textNumber.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace {

constexpr qint64 kMostBytes = 65'536;
constexpr int kVersion = 1;
constexpr double kFarthest = 1000;  // millimetres from where a part stands or stood
constexpr double kSmallestFont = 1; // points
constexpr double kLargestFont = 500;
constexpr int kMostFontName = 100; // characters
constexpr int kMostTitle = 1000;
constexpr double kMostColour = 0xFFFFFF;
const QString kKind = QStringLiteral("衡商汇报表版式");

struct FontItem {
    const char16_t* key;
    FontRecord ReportLayout::*record;
};
constexpr FontItem kFonts[] = {{u"title", &ReportLayout::titleFont},
                               {u"head", &ReportLayout::headFont},
                               {u"field", &ReportLayout::fieldFont},
                               {u"content", &ReportLayout::contentFont}};

struct EffectItem {
    const char16_t* key;
    bool FontRecord::*effect;
};
constexpr EffectItem kEffects[] = {{u"bold", &FontRecord::bold},
                                   {u"italic", &FontRecord::italic},
                                   {u"strikethrough", &FontRecord::strikethrough},
                                   {u"underline", &FontRecord::underline}};

QString key(const char16_t* text) {
    return QString::fromUtf16(text);
}

bool hasControls(const QString& text) {
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c.category() == QChar::Other_Control; });
}

/// The items of an object, each taken once. The first fault stays, and what is taken behind it is worthless.
class Items {
public:
    Items(const QJsonValue& value, QString place, QString& fault)
        : m_place(std::move(place))
        , m_fault(fault)
        , m_items(value.toObject()) {
        if (!value.isObject())
            refuse(QStringLiteral("“%1”不是一组数据").arg(m_place.chopped(1)));
    }

    QJsonValue take(const QString& name) {
        if (!m_items.contains(name))
            refuse(QStringLiteral("缺少“%1”").arg(m_place + name));
        return m_items.take(name);
    }
    double number(const QString& name, double lowest, double highest) {
        const QJsonValue value = take(name);
        const double number = value.toDouble();
        if (!value.isDouble() || !(number >= lowest && number <= highest))
            refuse(QStringLiteral("“%1”不是 %2 到 %3 之间的数")
                       .arg(m_place + name, plainNumber(lowest), plainNumber(highest)));
        return number;
    }
    double millimetres(const QString& name) { return number(name, -kFarthest, kFarthest); }
    double whole(const QString& name, double lowest, double highest) {
        const double value = number(name, lowest, highest);
        if (value != std::floor(value))
            refuse(QStringLiteral("“%1”不是整数").arg(m_place + name));
        return value;
    }
    bool flag(const QString& name) {
        const QJsonValue value = take(name);
        if (!value.isBool())
            refuse(QStringLiteral("“%1”不是 true 或 false").arg(m_place + name));
        return value.toBool();
    }
    QString text(const QString& name, int longest) {
        const QJsonValue value = take(name);
        if (!value.isString() || value.toString().size() > longest || hasControls(value.toString()))
            refuse(QStringLiteral("“%1”不是文字，或者太长").arg(m_place + name));
        return value.toString();
    }
    Items group(const QString& name) { return {take(name), m_place + name + u'.', m_fault}; }
    QString& fault() { return m_fault; }
    const QString& place() const { return m_place; }
    void refuse(const QString& words) {
        if (m_fault.isEmpty())
            m_fault = words;
    }
    /// What is left is not known.
    void end(const QString& words = QStringLiteral("有不认识的项“%1”")) {
        if (!m_items.isEmpty())
            refuse(words.arg(m_place + m_items.begin().key()));
    }

private:
    QString m_place; // "fonts.title."
    QString& m_fault;
    QJsonObject m_items;
};

QJsonObject fontObject(const FontRecord& font) {
    QJsonObject object{{QStringLiteral("name"), font.name},
                       {QStringLiteral("size"), double(font.size)},
                       {QStringLiteral("colour"), font.colour}};
    for (const EffectItem& item : kEffects)
        object[key(item.key)] = font.*item.effect;
    return object;
}

FontRecord takeFont(Items items) {
    FontRecord font;
    font.name = items.text(QStringLiteral("name"), kMostFontName);
    if (font.name.isEmpty())
        items.refuse(QStringLiteral("“%1name”是空的").arg(items.place()));
    font.size = float(items.number(QStringLiteral("size"), kSmallestFont, kLargestFont));
    font.colour = qint32(items.whole(QStringLiteral("colour"), 0, kMostColour));
    for (const EffectItem& item : kEffects)
        font.*item.effect = items.flag(key(item.key));
    items.end();
    return font;
}

QJsonArray headArray(const ReportLayout& layout) {
    QJsonArray head;
    for (std::size_t i = 0; i < layout.headLeft.size(); ++i)
        head << QJsonObject{{QStringLiteral("left"), layout.headLeft[i]},
                            {QStringLiteral("top"), layout.headTop[i]}};
    return head;
}

void takeHead(Items& items, ReportLayout& layout) {
    const QJsonValue value = items.take(QStringLiteral("head"));
    const QJsonArray head = value.toArray();
    if (!value.isArray() || head.size() != qsizetype(layout.headLeft.size()))
        return items.refuse(QStringLiteral("“head”的项数和这张报表不同"));
    for (std::size_t i = 0; i < layout.headLeft.size(); ++i) {
        Items item(head[qsizetype(i)], QStringLiteral("head[%1].").arg(i), items.fault());
        layout.headLeft[i] = item.millimetres(QStringLiteral("left"));
        layout.headTop[i] = item.millimetres(QStringLiteral("top"));
        item.end();
    }
}

QJsonObject boxObject(const ReportDescription& report, const ReportLayout& layout) {
    QJsonObject boxes;
    for (std::size_t i = 0; i < report.boxNames.size(); ++i)
        boxes[key(report.boxNames[i])] = layout.boxShift[i + 1];
    return boxes;
}

void takeBoxes(Items boxes, const ReportDescription& report, ReportLayout& layout) {
    layout.boxShift.fill(0);
    for (std::size_t i = 0; i < report.boxNames.size(); ++i)
        layout.boxShift[i + 1] = boxes.millimetres(key(report.boxNames[i]));
    boxes.end(QStringLiteral("这张报表没有“%1”"));
}

/// Whether the items are a layout of this report; if not, there is a fault.
bool isOf(Items& items, const ReportDescription& report) {
    if (items.take(QStringLiteral("kind")).toString() != kKind)
        items.fault() = QStringLiteral("这不是报表的版式文件");
    else if (items.take(QStringLiteral("version")).toDouble() != kVersion)
        items.refuse(QStringLiteral("版式文件的版本不认识"));
    else if (const QString name = items.take(QStringLiteral("report")).toString();
             name != QStringView(report.name))
        items.refuse(QStringLiteral("这是另一张报表的版式"));
    return items.fault().isEmpty();
}

void takePositions(Items& items, ReportLayout& layout) {
    layout.tableLeft = items.millimetres(QStringLiteral("tableLeft"));
    layout.tableTop = items.millimetres(QStringLiteral("tableTop"));
    layout.titleTop = items.millimetres(QStringLiteral("titleTop"));
    const QString shift = QStringLiteral("titleShift");
    layout.titleShift =
        float(layout.wideTitleShift ? items.millimetres(shift) : items.whole(shift, -kFarthest, kFarthest));
}

} // namespace

QByteArray layoutText(const ReportDescription& report, const KeptLayout& kept) {
    const ReportLayout& layout = kept.layout;
    QJsonObject fonts;
    for (const FontItem& item : kFonts)
        fonts[key(item.key)] = fontObject(layout.*item.record);
    const QJsonObject object{
        {QStringLiteral("kind"), kKind},
        {QStringLiteral("version"), kVersion},
        {QStringLiteral("report"), key(report.name)},
        {QStringLiteral("title"), kept.ownTitle ? QJsonValue(layout.reportTitle) : QJsonValue()},
        {QStringLiteral("titleShift"), double(layout.titleShift)},
        {QStringLiteral("titleTop"), layout.titleTop},
        {QStringLiteral("tableLeft"), layout.tableLeft},
        {QStringLiteral("tableTop"), layout.tableTop},
        {QStringLiteral("head"), headArray(layout)},
        {QStringLiteral("boxes"), boxObject(report, layout)},
        {QStringLiteral("fonts"), fonts}};
    return QJsonDocument(object).toJson();
}

LayoutOutcome readLayout(const QByteArray& text, const ReportDescription& report,
                         const ReportLayout& opening) {
    QString fault;
    const QJsonDocument document = text.size() > kMostBytes ? QJsonDocument() : QJsonDocument::fromJson(text);
    if (!document.isObject())
        return {{}, QStringLiteral("这不是报表的版式文件")};
    Items items(document.object(), {}, fault);
    if (!isOf(items, report))
        return {{}, fault};
    KeptLayout kept{opening, false};
    if (const QString title = QStringLiteral("title"); !document[title].isNull()) {
        kept.layout.reportTitle = items.text(title, kMostTitle);
        kept.ownTitle = true;
    } else {
        items.take(title);
    }
    takePositions(items, kept.layout);
    takeHead(items, kept.layout);
    takeBoxes(items.group(QStringLiteral("boxes")), report, kept.layout);
    Items fonts = items.group(QStringLiteral("fonts"));
    for (const FontItem& item : kFonts)
        kept.layout.*item.record = takeFont(fonts.group(key(item.key)));
    fonts.end();
    items.end();
    return fault.isEmpty() ? LayoutOutcome{kept, {}} : LayoutOutcome{{}, fault};
}

LayoutOutcome readLayoutFile(const QString& path, const QString& databasePath,
                             const ReportDescription& report, const ReportLayout& opening) {
    if (isOwnFile(path, databasePath))
        return {{}, QStringLiteral("这是本系统正在使用的文件")};
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return {{}, QStringLiteral("不是普通的文件")};
    if (info.size() > kMostBytes)
        return {{}, QStringLiteral("文件太大，不是报表的版式文件")};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {{}, QStringLiteral("文件不能打开")};
    return readLayout(file.read(kMostBytes + 1), report, opening);
}

QString writeLayoutFile(const QString& path, const ReportDescription& report, const KeptLayout& kept) {
    const QByteArray text = layoutText(report, kept);
    const LayoutOutcome again = readLayout(text, report, kept.layout);
    if (!again.kept)
        return again.fault;
    return writeWholeFile(path, text) ? QString() : QStringLiteral("文件不能写入：%1").arg(path);
}
