#pragma once

#include <QString>

/// The program's name and version, such as "衡商汇 1.0".
QString programVersion();
