#include "maintenance/maintenanceCommands.h"

#include "controls/prompts.h"
#include "data/ownFiles.h"
#include "maintenance/backup.h"
#include "maintenance/fileInputFm2.h"
#include "maintenance/fileInputFm3.h"
#include "maintenance/maintainView.h"

namespace {

void dataBackup(ViewHost& host, Prompts& prompts) {
    const Session& session = host.session();
    const auto name = prompts.anyFileToSave(QStringLiteral("选择目标文件"), QStringLiteral("backup.mdb"),
                                            QStringLiteral("所有文件 (*.*);;mdb文件 (*.mdb)"));
    if (!name)
        return;
    host.awaitFigures();
    const QString target = withDefaultEnding(*name);
    const bool made = !isOwnFile(target, session.cn.path()) && backUpDatabase(session.cn.path(), target);
    if (made)
        host.say({QStringLiteral("已备份：%1").arg(target)});
    prompts.tell(made ? QStringLiteral("备份成功！") : QStringLiteral("备份失败！"));
}

void registerImport(CommandTable& commands, ViewHost& host, Prompts& prompts) {
    // One import at a time: what the first window pairs is what the second one brings in.
    const auto plan = std::make_shared<ImportPlan>();
    host.registerWindow(QStringLiteral("FileInputFm2"),
                        [&host, &prompts, plan] { return new FileInputFm2(*plan, host, prompts); });
    host.registerWindow(QStringLiteral("FileInputFm3"),
                        [&host, &prompts, plan] { return new FileInputFm3(*plan, host, prompts); });
    for (const ImportTarget& target : importTargets())
        commands.add(QString::fromUtf16(target.command), [&host, plan,
                                                          number = target.number](IgnoringErrors& errors) {
            plan->importTarget = qint16(number);
            errors.run([&] { host.openWindow(QStringLiteral("FileInputFm2"), ViewHost::MainWindow::Stays); });
        });
}

} // namespace

void registerMaintenance(CommandTable& commands, ViewHost& host, Prompts& prompts) {
    int number = 0;
    for (const MaintainedTable& table : maintainedTables()) {
        const QString view = QString::fromUtf16(table.view);
        host.registerView(view, [&host, &prompts, &table] { return new MaintainView(table, host, prompts); });
        commands.add(QStringLiteral("maintain_Data%1").arg(++number),
                     [&host, view](IgnoringErrors& errors) { errors.run([&] { host.showFromMenu(view); }); });
    }
    registerImport(commands, host, prompts);
    commands.add(QStringLiteral("dataBackup1"), [&host, &prompts](IgnoringErrors& errors) {
        errors.run([&] { dataBackup(host, prompts); });
    });
}
