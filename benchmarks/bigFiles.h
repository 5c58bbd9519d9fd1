#pragma once

#include <QString>

/// Invented source files of seven columns and many rows, for measuring.
void writeBigText(const QString& path, int rows);
void writeBigDbf(const QString& path, int rows);
void writeBigXls(const QString& path, int rows);
void writeBigXlsx(const QString& path, int rows);
