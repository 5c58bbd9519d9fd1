#pragma once

#include "shell/view.h"

#include <QStringView>

#include <array>
#include <span>

/// Which of the toolbar's commands a view serves.
struct ToolbarRow {
    QStringView view;
    bool time;   // 统计时间
    bool search; // 查询
    bool show;   // 全库显示
    bool order;  // 顺序排序, 倒序排序
    bool print;  // 打印

    bool serves(ViewOperation operation) const;
};

std::span<const ToolbarRow> toolbarTable();

/// The row of a view, null for a name outside the table. A name matches in any case: "stockFm2" is StockFm2.
const ToolbarRow* toolbarRow(QStringView view);

/// One button of the toolbar.
struct ToolbarButton {
    int index;
    QStringView caption;
    QStringView icon;
    QStringView shortcut;
};

std::span<const ToolbarButton> toolbarButtons();
