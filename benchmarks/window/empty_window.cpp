// SPDX-License-Identifier: MIT
// The least that a window of the same kind can be: what ours is measured beside.
#include <QGuiApplication>
#include <QQuickView>

int main(int argumentCount, char** arguments) {
    QGuiApplication application(argumentCount, arguments);
    QQuickView view;
    view.setResizeMode(QQuickView::SizeRootObjectToView);
    view.resize(320, 568);
    view.setSource(QUrl(QStringLiteral("qrc:/Empty.qml")));
    view.show();
    return application.exec();
}
