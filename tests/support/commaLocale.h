#pragma once

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

#include <clocale>
#include <cstdlib>

/// The process in a country whose numbers have a comma, until the end of the scope. The locale is made here,
/// since a machine may have none; a test asks isOn().
class CommaLocale {
public:
    CommaLocale()
        : m_before(QByteArray(setlocale(LC_ALL, nullptr)))
        , m_language(QLocale()) {
        make();
        turnOn();
        QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    }
    ~CommaLocale() {
        setlocale(LC_ALL, m_before.constData());
        QLocale::setDefault(m_language);
    }
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    bool isOn() const { return m_on && *localeconv()->decimal_point == ','; }

private:
    void turnOn() {
#ifdef __SANITIZE_ADDRESS__
        const __lsan::ScopedDisabler theLibraryKeepsThePathThatItMakes;
#endif
        const QByteArray before = qgetenv("LOCPATH");
        qputenv("LOCPATH", QFile::encodeName(m_folder.path()));
        m_on = setlocale(LC_NUMERIC, "comma") != nullptr;
        before.isNull() ? qunsetenv("LOCPATH") : qputenv("LOCPATH", before);
    }
    void write(const char* name, const QByteArray& bytes) {
        QFile file(m_folder.filePath(QString::fromLatin1(name)));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    void make() {
        QByteArray signs;
        for (int i = 0; i < 128; ++i)
            signs += QStringLiteral("<U%1> /x%2 S\n")
                         .arg(i, 4, 16, QChar(u'0'))
                         .arg(i, 2, 16, QChar(u'0'))
                         .toUtf8();
        write("signs", "<code_set_name> ANSI_X3.4-1968\n<comment_char> %\n<escape_char> /\nCHARMAP\n" +
                           signs + "END CHARMAP\n");
        write("numbers", "comment_char %\nescape_char /\nLC_NUMERIC\ndecimal_point \",\"\n"
                         "thousands_sep \".\"\ngrouping 3;3\nEND LC_NUMERIC\n");
        QProcess localedef;
        localedef.setStandardErrorFile(QProcess::nullDevice());
        localedef.start(QStringLiteral("localedef"),
                        {QStringLiteral("-c"), QStringLiteral("--no-archive"), QStringLiteral("-i"),
                         m_folder.filePath(QStringLiteral("numbers")), QStringLiteral("-f"),
                         m_folder.filePath(QStringLiteral("signs")),
                         m_folder.filePath(QStringLiteral("comma"))});
        EXPECT_TRUE(localedef.waitForFinished()) << localedef.errorString().toStdString();
    }

    QTemporaryDir m_folder;
    QByteArray m_before;
    QLocale m_language;
    bool m_on = false;
};
