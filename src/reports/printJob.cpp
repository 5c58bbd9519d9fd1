#include "reports/printJob.h"

#include <QDir>
#include <QFileInfo>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSaveFile>

namespace {

constexpr int kPdfResolution = 1200; // dots an inch
constexpr double kMillimetresPerInch = 25.4;

class PdfJob : public PrintJob {
public:
    PdfJob(const QString& path, PaperOrientation orientation)
        : PrintJob(orientation)
        , m_path(path) {}
    ~PdfJob() override { endDocument(); }

protected:
    std::unique_ptr<QPagedPaintDevice> makeDevice() override {
        m_file = std::make_unique<QSaveFile>(nextPath());
        if (!m_file->open(QIODevice::WriteOnly))
            return nullptr;
        auto writer = std::make_unique<QPdfWriter>(m_file.get());
        writer->setResolution(kPdfResolution);
        writer->setCreator(QStringLiteral("衡商汇"));
        layOut(*writer);
        return writer;
    }
    bool store() override { return m_file->commit(); }

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
    std::unique_ptr<QSaveFile> m_file;
};

class PrinterJob : public PrintJob {
public:
    PrinterJob(const QPrinterInfo& printer, PaperOrientation orientation)
        : PrintJob(orientation)
        , m_printer(printer) {}
    ~PrinterJob() override { endDocument(); }

protected:
    std::unique_ptr<QPagedPaintDevice> makeDevice() override {
        auto printer = std::make_unique<QPrinter>(m_printer, QPrinter::HighResolution);
        printer->setFullPage(true);
        printer->setCreator(QStringLiteral("衡商汇"));
        layOut(*printer);
        return printer;
    }

private:
    QPrinterInfo m_printer;
};

} // namespace

std::unique_ptr<PrintJob> PrintJob::toPdf(const QString& path, PaperOrientation orientation) {
    return std::make_unique<PdfJob>(path, orientation);
}

std::unique_ptr<PrintJob> PrintJob::toPrinter(PaperOrientation orientation) {
    // A printer object claims to be valid on a machine without any, so the list is asked.
    const QStringList names = QPrinterInfo::availablePrinterNames();
    if (names.isEmpty())
        return nullptr;
    QPrinterInfo printer = QPrinterInfo::defaultPrinter();
    if (printer.isNull())
        printer = QPrinterInfo::printerInfo(names.first());
    return std::make_unique<PrinterJob>(printer, orientation);
}

void PrintJob::layOut(QPagedPaintDevice& device) const {
    const auto orientation =
        m_orientation == PaperOrientation::Landscape ? QPageLayout::Landscape : QPageLayout::Portrait;
    // Positions count from the sheet's corner, so there is no margin.
    device.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), orientation, QMarginsF(0, 0, 0, 0)));
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
    m_sheetEnded = false;
    return m_page.get();
}

void PrintJob::endDocument() {
    if (!m_painter)
        return;
    m_page.reset();
    const bool ended = m_painter->end();
    m_painter.reset();
    m_device.reset();
    m_sheetEnded = false;
    if (!ended || !store())
        fail(QStringLiteral("打印的内容没有全部写入。"));
}
