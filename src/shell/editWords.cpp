#include "shell/editWords.h"

namespace {

const QString kNothing = QStringLiteral("没有修改");

} // namespace

QString savedWords(int before, int left) {
    if (before == 0)
        return kNothing;
    if (left == 0)
        return QStringLiteral("已保存 %1 条").arg(before);
    if (left == before)
        return QStringLiteral("%1 条修改没有存进去，原样留着").arg(left);
    return QStringLiteral("已保存 %1 条，%2 条没有存进去，原样留着").arg(before - left).arg(left);
}

QString droppedWords(int before, int left) {
    if (before == 0)
        return kNothing;
    return left == 0 ? QStringLiteral("已放弃 %1 条修改").arg(before)
                     : QStringLiteral("%1 条修改没有放弃，原样留着").arg(left);
}
