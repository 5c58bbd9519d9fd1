#include "reports/printJob.h"

#include "data/ownFiles.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QRegularExpression>
#include <QSaveFile>

namespace {

constexpr int kPdfResolution = 1200; // dots an inch
constexpr double kMillimetresPerInch = 25.4;

/// The file with a blank for each blank in its tables of characters. A font without a tab draws its blank for
/// one, and Qt names the glyph by the first of the two. Nothing changes its place.
QByteArray withBlanks(QByteArray pdf) {
    static const QByteArray tab = "<0009>";
    static const QByteArray blank = "<0020>";
    static const QRegularExpression entry(
        QStringLiteral("<[0-9A-Fa-f]{4}> <[0-9A-Fa-f]{4}> (\\[[^\\]]*\\]|<[0-9A-Fa-f]{4}>)"));
    for (qsizetype from = pdf.indexOf("begincmap"); from >= 0; from = pdf.indexOf("begincmap", from + 1)) {
        const QByteArray table = pdf.mid(from, pdf.indexOf("endcmap", from) - from);
        for (auto each = entry.globalMatch(QString::fromLatin1(table)); each.hasNext();) {
            const QRegularExpressionMatch match = each.next();
            QByteArray characters = match.captured(1).toLatin1();
            characters.replace(tab, blank);
            pdf.replace(from + match.capturedStart(1), characters.size(), characters);
        }
    }
    return pdf;
}

class PdfJob : public PrintJob {
public:
    PdfJob(const QString& path, const Sheets& sheets)
        : PrintJob(sheets)
        , m_path(path) {}
    ~PdfJob() override { endDocument(); }

protected:
    std::unique_ptr<QPagedPaintDevice> makeDevice() override {
        const QString path = nextPath();
        if (!books().isEmpty() && isOwnFile(path, books())) {
            fail(ownFileRefusal(path));
            return nullptr;
        }
        m_file = std::make_unique<QSaveFile>(path);
        if (!m_file->open(QIODevice::WriteOnly))
            return nullptr;
        m_written.close();
        m_written.setData({});
        m_written.open(QIODevice::WriteOnly);
        auto writer = std::make_unique<QPdfWriter>(&m_written);
        writer->setResolution(kPdfResolution);
        writer->setCreator(QStringLiteral("衡商汇"));
        writer->setTitle(title());
        layOut(*writer);
        return writer;
    }
    bool store() override {
        const QByteArray pdf = withBlanks(m_written.data());
        // A short file reaches the disk only with the flush, and commit() does not hear when that fails.
        return m_file->write(pdf) == pdf.size() && m_file->flush() && m_file->commit();
    }

public:
    QString place() const override {
        return m_documents < 2 ? m_path : QStringLiteral("%1 等 %2 个文件").arg(m_path).arg(m_documents);
    }

private:
    QString nextPath() {
        if (++m_documents == 1)
            return m_path;
        const QFileInfo info(m_path);
        const QString name = QStringLiteral("%1-%2.%3")
                                 .arg(info.completeBaseName())
                                 .arg(m_documents)
                                 .arg(info.suffix().isEmpty() ? QStringLiteral("pdf") : info.suffix());
        return info.dir().filePath(name);
    }

    QString m_path;
    int m_documents = 0;
    QBuffer m_written;
    std::unique_ptr<QSaveFile> m_file;
};

/// Why the print service took no job behind the last document, "" if it did. The printer object does not pass
/// this on, so the service's own library is asked, which is loaded wherever there is a printer.
QString refusal() {
    constexpr int kFirstFailure = 0x0100; // the status codes below stand for success
    QLibrary service(QStringLiteral("cups"), 2);
    const auto status = reinterpret_cast<int (*)()>(service.resolve("cupsLastError"));
    const auto words = reinterpret_cast<const char* (*)()>(service.resolve("cupsLastErrorString"));
    if (!status || !words || (status() >= 0 && status() < kFirstFailure))
        return {};
    return QString::fromUtf8(words());
}

class PrinterJob : public PrintJob {
public:
    PrinterJob(const QPrinterInfo& printer, const Sheets& sheets)
        : PrintJob(sheets)
        , m_printer(printer) {}
    ~PrinterJob() override { endDocument(); }
    QString place() const override { return QStringLiteral("打印机 ") + m_printer.printerName(); }

protected:
    std::unique_ptr<QPagedPaintDevice> makeDevice() override {
        auto printer = std::make_unique<QPrinter>(m_printer, QPrinter::HighResolution);
        printer->setFullPage(true);
        printer->setCreator(QStringLiteral("衡商汇"));
        printer->setDocName(title());
        layOut(*printer);
        return printer;
    }
    void ended() override {
        if (const QString words = refusal(); !words.isEmpty())
            fail(QStringLiteral("打印机没有接受：%1").arg(words));
    }

private:
    QPrinterInfo m_printer;
};

} // namespace

std::unique_ptr<PrintJob> PrintJob::toPdf(const QString& path, const Sheets& sheets) {
    return std::make_unique<PdfJob>(path, sheets);
}

QStringList PrintJob::printers() {
    // A printer object claims to be valid on a machine without any, so the list is asked.
    return QPrinterInfo::availablePrinterNames();
}

std::unique_ptr<PrintJob> PrintJob::toPrinter(const QString& name, const Sheets& sheets) {
    const QStringList names = printers();
    if (names.isEmpty())
        return nullptr;
    QPrinterInfo printer =
        names.contains(name) ? QPrinterInfo::printerInfo(name) : QPrinterInfo::defaultPrinter();
    if (printer.isNull())
        printer = QPrinterInfo::printerInfo(names.first());
    return std::make_unique<PrinterJob>(printer, sheets);
}

void PrintJob::layOut(QPagedPaintDevice& device) const {
    auto orientation = device.pageLayout().orientation();
    if (m_sheets.orientation)
        orientation = *m_sheets.orientation == PaperOrientation::Landscape ? QPageLayout::Landscape
                                                                           : QPageLayout::Portrait;
    const QPageSize size = m_sheets.paper.isEmpty() ? QPageSize(QPageSize::A4)
                                                    : QPageSize(m_sheets.paper, QPageSize::Millimeter,
                                                                QString(), QPageSize::ExactMatch);
    // Positions count from the sheet's corner, so there is no margin.
    device.setPageLayout(QPageLayout(size, orientation, QMarginsF(0, 0, 0, 0)));
}

bool PrintJob::beginDocument() {
    m_device = makeDevice();
    if (!m_device)
        return false;
    m_painter = std::make_unique<QPainter>();
    if (!m_painter->begin(m_device.get())) {
        m_painter.reset();
        m_device.reset();
        return false;
    }
    m_page = std::make_unique<PainterPage>(*m_painter, m_device->logicalDpiX() / kMillimetresPerInch,
                                           PainterPage::Medium::Paper);
    return true;
}

void PrintJob::fail(const QString& fault) {
    if (m_fault.isEmpty())
        m_fault = fault;
}

PaperPage* PrintJob::page() {
    if (!m_fault.isEmpty())
        return nullptr;
    const bool fresh = !m_painter;
    if (fresh && !beginDocument()) {
        fail(QStringLiteral("不能开始打印。"));
        return nullptr;
    }
    if (!fresh && m_sheetEnded && !m_device->newPage()) {
        fail(QStringLiteral("不能打印下一页。"));
        return nullptr;
    }
    if (fresh || m_sheetEnded)
        ++m_sheetCount;
    m_sheetEnded = false;
    return m_page.get();
}

void PrintJob::endDocument() {
    if (!m_painter)
        return;
    m_page.reset();
    const bool painted = m_painter->end();
    m_painter.reset();
    m_device.reset();
    m_sheetEnded = false;
    if (!painted || !store())
        fail(QStringLiteral("打印的内容没有全部写入。"));
    ended();
}
