#include "shell/version.h"

QString programVersion() {
    return QStringLiteral("衡商汇 " SHOP_VERSION);
}
