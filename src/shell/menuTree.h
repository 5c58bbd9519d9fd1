#pragma once

#include <QStringView>

#include <span>

/// One row of the menu tree. Rows follow in the order of the menu; a row of a deeper level lies in the last
/// one above it that is shallower.
struct MenuRow {
    int level;
    QStringView control;
    QStringView caption; // empty: a separator line
    QStringView command; // what a leaf runs; empty for a separator or a submenu
};

std::span<const MenuRow> menuTree();
