#include "controls/filePrompt.h"

#include "controls/formParts.h"

#include <QDateTime>
#include <QFileIconProvider>
#include <QFileSystemModel>
#include <QIdentityProxyModel>
#include <QLocale>

namespace {

enum Column { Name, Size, Kind, Changed };

QString sizeText(qint64 bytes) {
    constexpr qint64 kKilobyte = 1024;
    if (bytes < kKilobyte)
        return QStringLiteral("%1 字节").arg(bytes);
    return QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

QString kindText(const QFileInfo& file) {
    if (file.isDir())
        return QStringLiteral("文件夹");
    return file.suffix().isEmpty() ? QStringLiteral("文件") : file.suffix() + QStringLiteral(" 文件");
}

/// The files as the dialog lists them; their own model would speak the language of the locale.
class ChineseFiles : public QIdentityProxyModel {
public:
    using QIdentityProxyModel::QIdentityProxyModel;

    QVariant data(const QModelIndex& index, int role) const override {
        const auto* files = qobject_cast<const QFileSystemModel*>(sourceModel());
        if (!files || role != Qt::DisplayRole || index.column() == Name)
            return QIdentityProxyModel::data(index, role);
        const QFileInfo file = files->fileInfo(mapToSource(index));
        switch (index.column()) {
        case Size:
            return file.isDir() ? QString() : sizeText(file.size());
        case Kind:
            return kindText(file);
        default:
            return file.lastModified().toString(QStringLiteral("yyyy-M-d HH:mm"));
        }
    }
};

/// Qt's own provider opens a file whose ending it does not know to see its kind, and closing any descriptor
/// of the open database, under whatever name, drops the locks on it.
class UnopenedFiles : public QFileIconProvider {
public:
    QIcon icon(const QFileInfo& file) const override {
        return QFileIconProvider::icon(file.isDir() ? Folder : File);
    }
    QString type(const QFileInfo& file) const override { return kindText(file); }
};

} // namespace

FileDialog::FileDialog(const QString& title, const QString& filter, QWidget* parent)
    : QFileDialog(parent, title, QString(), filter) {
    static UnopenedFiles kinds;
    giveDialogFrame(this);
    setOption(QFileDialog::DontUseNativeDialog);
    setIconProvider(&kinds);
    setProxyModel(new ChineseFiles(this));
}
