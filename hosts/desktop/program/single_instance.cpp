// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/single_instance.h"

#include <QFileInfo>
#include <QLocalSocket>
#include <QStandardPaths>

namespace hosts::desktop {
namespace {

constexpr int patience = 1000;  // ms

// The folder that is the user's own and goes with the session; nothing where there is none.
QString runtimeFolder() {
    const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return QFileInfo(folder).isDir() ? folder : QString();
}

}  // namespace

SingleInstance::SingleInstance(const QString& key) {
    const QString folder = runtimeFolder();
    if (!folder.isEmpty()) _socket = folder + QStringLiteral("/trivel3-settings-") + key;
}

bool SingleInstance::wakeOther() {
    if (_socket.isEmpty() || !QFileInfo::exists(_socket)) return false;
    QLocalSocket other;
    other.connectToServer(_socket);
    if (!other.waitForConnected(patience)) return false;
    other.write(qgetenv("XDG_ACTIVATION_TOKEN") + '\n');
    return other.waitForBytesWritten(patience);
}

void SingleInstance::claim() {
    if (_socket.isEmpty()) return;
    // One that nobody answers at was left by a program that died.
    QLocalServer::removeServer(_socket);
    _server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&_server, &QLocalServer::newConnection, this, &SingleInstance::answer);
    _server.listen(_socket);
}

void SingleInstance::answer() {
    while (QLocalSocket* other = _server.nextPendingConnection()) {
        connect(other, &QLocalSocket::disconnected, other, &QObject::deleteLater);
        connect(other, &QLocalSocket::readyRead, this, [this, other] {
            if (other->canReadLine()) emit wanted(other->readLine().trimmed());
        });
    }
}

}  // namespace hosts::desktop
