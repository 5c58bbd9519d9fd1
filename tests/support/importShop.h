#pragma once

#include "import/sampleFile.h"
#include "support/shopWindow.h"

/// The import windows, driven from the menu command to the end of the run.
class ImportShop : public ShopWindow {
protected:
    /// Opens the import of a target (1 customers, 2 lines, 3 products) and a source file.
    void open(int target, const QString& path, SourceKind kind) {
        if (!main)
            start();
        drive->choose(QStringLiteral("Input_Data%1").arg(target));
        form = std::make_unique<Driver>(*window("FileInputFm2"));
        prompts.openName = path;
        form->click(QStringLiteral("Command7(%1)").arg(int(kind)));
    }
    void open(int target, const SampleFile& sample) { open(target, sample.path(), sample.kind()); }
    /// Takes a table of the source.
    void take(const QString& table) {
        form->clickItem("List5", table);
        form->click("Command6");
    }
    /// Brings the named columns over, in this order.
    void pair(const std::vector<std::pair<QString, QString>>& pairs) {
        for (const auto& [source, target] : pairs) {
            form->clickItem("List1", source);
            form->click("Command2(0)");
            form->clickItem("List4", target);
            form->click("Command3(0)");
        }
    }
    void pairAsExpected(const SampleFile& sample) {
        std::vector<std::pair<QString, QString>> pairs;
        for (const QJsonValue& each : sample.expected["pairs"].toArray())
            pairs.emplace_back(each.toArray()[0].toString(), each.toArray()[1].toString());
        pair(pairs);
    }
    void run() {
        prompts.expectConfirm("确实要导入数据吗？ ", true);
        form->click("Command4");
        runs = std::make_unique<Driver>(*window("FileInputFm3"));
    }
    void finishRun() {
        QCoreApplication::processEvents();
        runs->click("Command3");
        QCoreApplication::processEvents();
    }
    /// The whole road of a sample file.
    void importSample(const QString& name, bool clean = true) {
        const SampleFile sample = sampleFile(name);
        const QString target = sample.expected["target"].toString();
        open(target == u"clientTable" ? 1 : target == u"buyList" ? 2 : 3, sample);
        const QString table = sample.expected.contains("use_table")
                                  ? sample.expected["use_table"].toString()
                                  : sample.tables().first().toObject()["name"].toString();
        take(table);
        pairAsExpected(sample);
        run();
        if (clean)
            prompts.expectMessage("数据导入成功！", "OK");
        finishRun();
    }
    /// The four lists, "" where all are empty.
    QString lists() {
        QStringList names;
        for (const char* list : {"List1", "List2", "List3", "List4"})
            names << form->entries(list);
        return names.join(u' ');
    }
    QString rows(const char* table) {
        return books.stored(QStringLiteral("SELECT count(*) FROM \"%1\"").arg(QString::fromUtf8(table)));
    }

    std::unique_ptr<Driver> form;
    std::unique_ptr<Driver> runs;
};
