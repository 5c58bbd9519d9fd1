// The fonts of the program in other locales and on other machines, each in a process of its own.
#include "support/printQt.h"

#include <QFile>
#include <QProcess>
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

TEST(Fonts, FallToNotoWhereNothingElseIs) {
    // Another folder of these fonts can be named for a machine that has them elsewhere.
    const QString folder =
        qEnvironmentVariable("SHOP_NOTO_FONTS", QStringLiteral("/usr/share/fonts/opentype/noto"));
    if (!QFile::exists(folder + "/NotoSansCJK-Regular.ttc"))
        GTEST_SKIP() << "no Noto CJK fonts in " << folder.toStdString() << " (package fonts-noto-cjk)";
    const QTemporaryDir settings;
    QFile file(settings.filePath("fonts.conf"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        QStringLiteral("<?xml version='1.0'?><fontconfig><dir>%1</dir><cachedir>%2</cachedir></fontconfig>")
            .arg(folder, settings.path())
            .toUtf8());
    file.close();
    for (const char* locale : {"C.UTF-8", "zh_CN.UTF-8"}) {
        const auto fonts = probe({{"LC_ALL", locale}, {"FONTCONFIG_FILE", file.fileName()}});
        ASSERT_EQ(fonts.size(), 3u);
        EXPECT_TRUE(fonts[0].family.startsWith("Noto Sans CJK")) << fonts[0].family.toStdString();
        EXPECT_TRUE(fonts[1].family.startsWith("Noto Serif CJK")) << fonts[1].family.toStdString();
        EXPECT_TRUE(fonts[2].family.startsWith("Noto Sans CJK")) << fonts[2].family.toStdString();
        for (const ProbedFont& font : fonts)
            EXPECT_TRUE(font.chinese);
    }
}

} // namespace
