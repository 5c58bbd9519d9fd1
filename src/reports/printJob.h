#pragma once

#include "reports/paperPage.h"
#include "reports/reportDescription.h"

#include <QPagedPaintDevice>
#include <QString>

#include <memory>

/// Sheets on their way to paper or into PDF files. A sheet begins with the first thing drawn on it, so that
/// ending the last one leaves no blank behind. A job that is destroyed is finished first.
class PrintJob {
public:
    /// Into PDF files: the first one has the given name, the ones after each endDocument() "name-2.pdf" and
    /// so on.
    static std::unique_ptr<PrintJob> toPdf(const QString& path, PaperOrientation orientation);
    /// To the printer that the system prefers; null where it has none.
    static std::unique_ptr<PrintJob> toPrinter(PaperOrientation orientation);

    virtual ~PrintJob() = default;
    PrintJob(const PrintJob&) = delete;
    PrintJob& operator=(const PrintJob&) = delete;

    /// The sheet to draw on; null where it cannot be had, which fault() explains.
    PaperPage* page();
    void newPage() { m_sheetEnded = true; }
    void endDocument();
    /// Why the output is not whole; empty while all is well.
    const QString& fault() const { return m_fault; }

protected:
    explicit PrintJob(PaperOrientation orientation)
        : m_orientation(orientation) {}

    /// Makes the device of the next document; null on failure.
    virtual std::unique_ptr<QPagedPaintDevice> makeDevice() = 0;
    /// Puts the document that has ended in its place; false where it is not whole.
    virtual bool store() { return true; }
    void layOut(QPagedPaintDevice& device) const;

private:
    bool beginDocument();
    void fail(const QString& fault);

    PaperOrientation m_orientation;
    std::unique_ptr<QPagedPaintDevice> m_device;
    std::unique_ptr<QPainter> m_painter;
    std::unique_ptr<PainterPage> m_page;
    bool m_sheetEnded = false;
    QString m_fault;
};
