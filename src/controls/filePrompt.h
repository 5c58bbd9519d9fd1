#pragma once

#include <QFileDialog>

/// The dialog in which a file is chosen. What it says of files, their kind, size and day, is Chinese in every
/// locale.
class FileDialog : public QFileDialog {
    Q_OBJECT

public:
    /// `filter` as in "CSV (*.csv);;所有文件 (*.*)".
    FileDialog(const QString& title, const QString& filter, QWidget* parent);
};
