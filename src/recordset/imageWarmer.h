#pragma once

#include "recordset/tableImage.h"

#include <QObject>

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

class Connection;
struct LoadedRows;

/// A column to have in memory before anybody asks for it, and what is to be kept of its texts.
struct WarmColumn {
    QString name;
    bool index = false;    // the rows by text
    bool ranks = false;    // the order of the texts
    bool distinct = false; // the texts in that order
};

/// Columns of one table that are read in one pass.
struct WarmTable {
    QString table;
    std::vector<WarmColumn> columns;
};

/// Reads columns of images that stand already in a thread, and hands them over between two actions of the
/// connection. What is asked for before it came is read then and there. What cannot be read is left: its
/// first use will tell.
class ImageWarmer : public QObject {
public:
    ImageWarmer(Connection& connection, std::vector<WarmTable> tables);
    ~ImageWarmer() override;
    ImageWarmer(const ImageWarmer&) = delete;
    ImageWarmer& operator=(const ImageWarmer&) = delete;

    void start() { next(); }
    /// Runs when all is done.
    std::function<void()> onEnd;

private:
    /// One pass: what the thread is given, and what it gives.
    struct Pass;

    void next();
    void startNext();
    std::shared_ptr<Pass> passOver(const WarmTable& table);
    void read(Pass& pass);
    void readRows(Pass& pass);
    template <typename Step> void inStep(Step&& step);
    static void place(Pass& pass, LoadedRows&& rows);
    static void order(WarmedColumn& column, const WarmColumn& wish);
    void handOver(const std::shared_ptr<Pass>& pass);
    void adopt(TableImage& image, Pass& pass);
    void waitForIdle(std::function<void()> then);

    Connection& m_connection;
    std::vector<WarmTable> m_tables;     // still to be read, the next one last
    std::weak_ptr<TableImage> m_warming; // notes its changes for the pass under way
    std::thread m_thread;
    std::atomic<bool> m_stop = false;
};
