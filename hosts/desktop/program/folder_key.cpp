// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/folder_key.h"

#include <QCryptographicHash>
#include <QFileInfo>

namespace hosts::desktop {

QString folderKey(const std::string& folder) {
    constexpr int length = 16;
    const QString path = QFileInfo(QString::fromStdString(folder)).canonicalFilePath();
    const QByteArray hash = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(hash.toHex().left(length));
}

}  // namespace hosts::desktop
