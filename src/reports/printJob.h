#pragma once

#include "reports/paperPage.h"
#include "reports/reportDescription.h"

#include <QPagedPaintDevice>
#include <QSizeF>
#include <QStringList>

#include <memory>
#include <optional>

/// Sheets on their way to paper or into PDF files. A sheet begins with the first thing drawn on it, so that
/// ending the last one leaves no blank behind. A job that is destroyed is finished first.
class PrintJob {
public:
    /// How the sheets lie, and the title that the job or file bears.
    struct Sheets {
        std::optional<PaperOrientation> orientation; // none: as the printer stands
        QString title;
        QString books = {}; // the open database: no document takes the place of its files
        QSizeF paper = {};  // in millimetres; none: A4
    };

    /// Into PDF files: the first one has the given name, the ones after each endDocument() "name-2.pdf" and
    /// so on.
    static std::unique_ptr<PrintJob> toPdf(const QString& path, const Sheets& sheets);
    /// To the printer of this name, else to the one that the system prefers; null where it has none.
    static std::unique_ptr<PrintJob> toPrinter(const QString& name, const Sheets& sheets);
    /// The printers of the machine.
    static QStringList printers();

    virtual ~PrintJob() = default;
    PrintJob(const PrintJob&) = delete;
    PrintJob& operator=(const PrintJob&) = delete;

    /// The sheet to draw on; null where it cannot be had, which fault() explains.
    PaperPage* page();
    void newPage() { m_sheetEnded = true; }
    void endDocument();
    /// Sheets that were begun, in all documents.
    int sheetCount() const { return m_sheetCount; }
    /// Where the documents go, in words for the user: a printer or files.
    virtual QString place() const = 0;
    /// Why the output is not whole; empty while all is well.
    const QString& fault() const { return m_fault; }

protected:
    explicit PrintJob(Sheets sheets)
        : m_sheets(std::move(sheets)) {}

    /// Makes the device of the next document; null on failure.
    virtual std::unique_ptr<QPagedPaintDevice> makeDevice() = 0;
    /// Puts the document that has ended in its place; false where it is not whole.
    virtual bool store() { return true; }
    /// Runs when a document has gone where it goes; may fail().
    virtual void ended() {}
    void layOut(QPagedPaintDevice& device) const;
    const QString& title() const { return m_sheets.title; }
    const QString& books() const { return m_sheets.books; }
    /// Keeps the first reason.
    void fail(const QString& fault);

private:
    bool beginDocument();

    Sheets m_sheets;
    std::unique_ptr<QPagedPaintDevice> m_device;
    std::unique_ptr<QPainter> m_painter;
    std::unique_ptr<PainterPage> m_page;
    bool m_sheetEnded = false;
    int m_sheetCount = 0;
    QString m_fault;
};
