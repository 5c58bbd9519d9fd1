// The fonts of the program in other locales and on other machines, each in a process of its own.
#include "support/printQt.h"

#include <QDataStream>
#include <QFile>
#include <QFont>
#include <QProcess>
#include <QRawFont>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

struct ProbedFont {
    QString use;
    QString mark; // of the font's file
    double height = 0;
    bool chinese = false;
    QString family;
};

std::vector<ProbedFont> probe(const QMap<QString, QString>& environment) {
    QProcess process;
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG", "LANGUAGE", "FC_LANG"})
        variables.remove(name);
    for (auto each = environment.begin(); each != environment.end(); ++each)
        variables.insert(each.key(), each.value());
    process.setProcessEnvironment(variables);
    process.start(QStringLiteral(FONT_PROBE), {});
    process.waitForFinished(60000);
    std::vector<ProbedFont> fonts;
    for (const QString& line : QString::fromUtf8(process.readAllStandardOutput()).split(u'\n')) {
        const QStringList parts = line.split(u'|');
        if (parts.size() == 5)
            fonts.push_back({parts[0], parts[1], parts[2].toDouble(), parts[3] == u"1", parts[4]});
    }
    EXPECT_EQ(fonts.size(), 3u);
    return fonts;
}

TEST(Fonts, AreTheSameInEveryLocale) {
    const auto plain = probe({{"LC_ALL", "C.UTF-8"}});
    ASSERT_EQ(plain.size(), 3u);
    EXPECT_NEAR(plain[1].height, 3.53, 0.01);
    EXPECT_NEAR(plain[2].height, 4.14, 0.01);
    for (const char* locale : {"zh_CN.UTF-8", "zh_TW.UTF-8", "de_DE.UTF-8"}) {
        const auto fonts = probe({{"LANG", locale}});
        ASSERT_EQ(fonts.size(), 3u);
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_EQ(fonts[i].mark, plain[i].mark)
                << locale << ": " << fonts[i].use.toStdString() << " is " << fonts[i].family.toStdString();
            EXPECT_EQ(fonts[i].height, plain[i].height) << locale << ": " << fonts[i].use.toStdString();
            EXPECT_TRUE(fonts[i].chinese);
        }
    }
}

/// The table of names of a font file, with one family in English.
QByteArray nameTable(const QString& family) {
    const std::pair<quint16, QString> names[] = {{quint16(1), family},
                                                 {quint16(2), QStringLiteral("Regular")},
                                                 {quint16(4), family},
                                                 {quint16(6), QString(family).remove(u' ')}};
    QByteArray table;
    QByteArray texts;
    QDataStream out(&table, QIODevice::WriteOnly);
    out << quint16(0) << quint16(std::size(names)) << quint16(6 + 12 * std::size(names));
    for (const auto& [what, text] : names) {
        QByteArray bytes;
        QDataStream letters(&bytes, QIODevice::WriteOnly);
        for (const QChar letter : text)
            letters << quint16(letter.unicode());
        // Windows, Unicode, English.
        out << quint16(3) << quint16(1) << quint16(0x409) << what << quint16(bytes.size())
            << quint16(texts.size());
        texts += bytes;
    }
    return table + texts;
}

/// The file of an installed font under another name.
QByteArray renamedFont(const QRawFont& font, const QString& family) {
    QByteArray directory;
    QByteArray tables;
    std::vector<std::pair<QByteArray, QByteArray>> kept;
    for (const char* tag : {"OS/2", "cmap", "cvt ", "fpgm", "glyf", "head", "hhea", "hmtx", "loca", "maxp",
                            "name", "post", "prep"})
        if (const QByteArray table = qstrcmp(tag, "name") == 0 ? nameTable(family) : font.fontTable(tag);
            !table.isEmpty())
            kept.emplace_back(tag, table);
    QDataStream out(&directory, QIODevice::WriteOnly);
    out << quint32(0x00010000) << quint16(kept.size()) << quint16(128) << quint16(3)
        << quint16(16 * kept.size() - 128);
    const auto start = quint32(12 + 16 * kept.size());
    for (const auto& [tag, table] : kept) {
        out.writeRawData(tag.constData(), 4);
        out << quint32(0) << quint32(start + tables.size()) << quint32(table.size());
        tables += table + QByteArray((4 - table.size() % 4) % 4, '\0');
    }
    return directory + tables;
}

/// A machine that has these families and no other. They are made from a font of this one.
class FontsOfAMachine {
public:
    explicit FontsOfAMachine(const QStringList& families) {
        const QRawFont font = QRawFont::fromFont(QFont(QStringLiteral("AR PL SungtiL GB")));
        for (const QString& family : families)
            write(family + QStringLiteral(".ttf"), renamedFont(font, family));
        write(QStringLiteral("fonts.conf"),
              QStringLiteral("<?xml version='1.0'?><fontconfig><dir>%1</dir><cachedir>%1</cachedir>"
                             "</fontconfig>")
                  .arg(m_folder.path())
                  .toUtf8());
    }
    QString settings() const { return m_folder.filePath(QStringLiteral("fonts.conf")); }

private:
    void write(const QString& name, const QByteArray& bytes) const {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    QTemporaryDir m_folder;
};

TEST(Fonts, FallToNotoWhereNothingElseIs) {
    const FontsOfAMachine machine({"Noto Sans CJK JP", "Noto Sans CJK SC", "Noto Serif CJK SC"});
    for (const char* locale : {"C.UTF-8", "zh_CN.UTF-8"}) {
        const auto fonts = probe({{"LC_ALL", locale}, {"FONTCONFIG_FILE", machine.settings()}});
        ASSERT_EQ(fonts.size(), 3u);
        EXPECT_EQ(fonts[0].family, u"Noto Sans CJK SC");
        EXPECT_EQ(fonts[1].family, u"Noto Serif CJK SC");
        EXPECT_EQ(fonts[2].family, u"Noto Sans CJK SC");
        for (const ProbedFont& font : fonts)
            EXPECT_TRUE(font.chinese);
    }
}

} // namespace
