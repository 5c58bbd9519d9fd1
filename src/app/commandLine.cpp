#include "app/commandLine.h"

#include <QDir>

namespace {

/// An option that takes a value, and what it is a value of.
struct Option {
    const char16_t* name;
    const char16_t* wants;
    std::optional<QString> CommandLine::*value;
};
constexpr Option kOptions[] = {
    {u"--books", u"文件夹", &CommandLine::books},
    {u"--restore", u"备份文件", &CommandLine::backup},
};

const Option* optionOf(const QString& name) {
    for (const Option& option : kOptions)
        if (name == QStringView(option.name))
            return &option;
    return nullptr;
}

QString refused(const QString& why) {
    return why + QStringLiteral("\n用法见 hengshanghui --help。");
}

/// Takes the option at the front of the words, with its value behind "=" or in the next word.
QString takeOption(QStringList& words, CommandLine& line) {
    const QString word = words.takeFirst();
    const qsizetype equals = word.indexOf(u'=');
    const Option* option = optionOf(word.left(equals));
    if (!option)
        return refused(QStringLiteral("不认识的参数：%1").arg(word));
    const QString name = QString::fromUtf16(option->name);
    QString value = word.mid(equals + 1);
    if (equals < 0)
        value = words.isEmpty() || words.front().startsWith(u"--") ? QString() : words.takeFirst();
    if (value.isEmpty())
        return refused(QStringLiteral("%1 后面要写%2。").arg(name, QString::fromUtf16(option->wants)));
    if (line.*option->value)
        return refused(QStringLiteral("%1 只能写一次。").arg(name));
    line.*option->value = value;
    return {};
}

} // namespace

CommandLine readCommandLine(const QStringList& arguments) {
    CommandLine line;
    QStringList words = arguments;
    while (!words.isEmpty() && line.fault.isEmpty())
        line.fault = takeOption(words, line);
    if (line.books)
        line.books = QDir::cleanPath(QDir::current().absoluteFilePath(*line.books));
    return line;
}

QStringList argumentsAgain(const CommandLine& line, const QString& backup) {
    QStringList words;
    if (line.books)
        words << QStringLiteral("--books=") + *line.books;
    if (!backup.isEmpty())
        words << QStringLiteral("--restore=") + backup;
    return words;
}

QString commandLineHelp(const QString& dataFolder) {
    return QStringLiteral(
               "用法：hengshanghui [选项]\n"
               "\n"
               "  --books 文件夹      打开这个文件夹里的数据文件 VelmorClientBank.mdb\n"
               "  --restore 备份文件  先把备份放到数据文件的位置（原来的改名保留），再打开\n"
               "  --help              显示这段说明\n"
               "  --version           显示版本\n"
               "\n"
               "没有 --books 时，数据文件在程序所在的文件夹里；那里没有而程序是安装的，在\n"
               "  %1\n"
               "这个文件夹在第一次启动时建立，里面是一家空店。备份和小票抬头也在数据文件的文件夹里。\n")
        .arg(dataFolder);
}
