#include "maintenance/maintenanceCommands.h"

#include "controls/prompts.h"
#include "maintenance/backup.h"
#include "maintenance/maintainView.h"

namespace {

void dataBackup(Session& session, Prompts& prompts) {
    const auto target =
        prompts.saveFile(QStringLiteral("选择目标文件"), session.appPath + QStringLiteral("/backup.mdb"),
                         QStringLiteral("mdb文件 (*.mdb);;所有文件 (*.*)"));
    if (!target)
        return;
    prompts.tell(backUpDatabase(session.cn.path(), withDefaultEnding(*target))
                     ? QStringLiteral("备份成功！")
                     : QStringLiteral("备份失败！"));
}

} // namespace

void registerMaintenance(CommandTable& commands, ViewHost& host, Prompts& prompts) {
    int number = 0;
    for (const MaintainedTable& table : maintainedTables()) {
        const QString view = QString::fromUtf16(table.view);
        host.registerView(view, [&host, &prompts, &table] { return new MaintainView(table, host, prompts); });
        commands.add(QStringLiteral("maintain_Data%1").arg(++number),
                     [&host, view] { host.showFromMenu(view); });
    }
    commands.add(QStringLiteral("dataBackup1"), [&host, &prompts] { dataBackup(host.session(), prompts); });
}
