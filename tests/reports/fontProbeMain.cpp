// font_probe: which fonts the program ends up with on this machine, in this locale. A line each for the
// interface and the two report fonts: the mark of the font's file, the height of a line, its name.
#include "app/appearance.h"
#include "reports/paperFont.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QRawFont>

#include <cstdio>

namespace {

void tell(const char* use, const QFont& font, double height) {
    const QRawFont raw = QRawFont::fromFont(font, QFontDatabase::SimplifiedChinese);
    const QByteArray mark =
        QCryptographicHash::hash(raw.fontTable("name"), QCryptographicHash::Md5).toHex().left(8);
    std::printf("%s|%s|%.2f|%d|%s\n", use, mark.constData(), height, raw.supportsCharacter(QChar(u'宽')),
                raw.familyName().toUtf8().constData());
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    setAppearance(application);
    tell("interface", QApplication::font(), QFontMetricsF(QApplication::font()).height());
    const ReportLayout layout;
    for (const auto& [use, record] :
         {std::pair{"content", layout.contentFont}, std::pair{"field", layout.fieldFont}}) {
        const PaperFont font(record);
        tell(use, font.font(), font.lineHeight());
    }
}
