// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/screenshots.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QQuickItem>
#include <QRegularExpression>

#include "hosts/desktop/program/settings_window.h"
#include "hosts/linux/device_information.h"
#include "hosts/session/composers.h"
#include "hosts/session/page_snapshot.h"
#include "hosts/session/quiet_services.h"
#include "hosts/session/scratch_file_system.h"
#include "hosts/session/settings_session.h"

namespace hosts::desktop {
namespace {

// Nothing leaves the program while its picture is taken.
class NoHandOver final : public HandOver {
public:
    Outcome sendMail(const platform::MFMailComposeViewController&) override { return {}; }
    Outcome saveMail(const platform::MFMailComposeViewController&) override { return {}; }
    Outcome post(const platform::SLComposeViewController&, const std::string&) override { return {}; }
};

QString fileNameOf(const QString& title) {
    static const QRegularExpression others(QStringLiteral("[^\\p{L}\\p{N}]+"));
    QString name = title.toLower().replace(others, QStringLiteral("-"));
    while (name.endsWith(u'-'))
        name.chop(1);
    return name.isEmpty() ? QStringLiteral("page") : name;
}

QQuickItem* seenTable(const QQuickItem& item) {
    if (item.objectName() == QLatin1String("table") && item.isEnabled()) return const_cast<QQuickItem*>(&item);
    for (const QQuickItem* child : item.childItems()) {
        if (QQuickItem* table = seenTable(*child)) return table;
    }
    return nullptr;
}

// Goes through the pages of a window and draws what it comes by.
class Tour {
public:
    Tour(Navigation& navigation, QQuickView& view, QDir folder)
        : _navigation(navigation), _view(view), _folder(std::move(folder)) {}

    bool run(std::string& error) {
        visitPage(fileNameOf(_navigation.current()->title()));
        if (!_error.isEmpty()) error = _error.toStdString();
        return _error.isEmpty();
    }

private:
    void settle() {
        for (int i = 0; i < 4; ++i)
            QCoreApplication::processEvents();
    }

    void draw(const QString& name) {
        settle();
        const QString file = _folder.filePath(name + QStringLiteral(".png"));
        const QImage picture = _view.grabWindow();
        if (picture.isNull() || !picture.save(file)) _error = file + QStringLiteral(": cannot be written");
    }

    void visitPage(const QString& name) {
        drawPage(name);
        drawComposer(name);
        const auto page = _navigation.current()->controller().shared_from_this();
        visitRows(*page, name);
        _navigation.current()->touchRightItem();
        drawComposer(name);
    }

    void drawPage(const QString& name) {
        draw(name);
        QQuickItem* table = seenTable(*_view.rootObject());
        for (int part = 2; table && !table->property("atYEnd").toBool(); ++part) {
            const double step = table->height() - 60;
            table->setProperty("contentY", table->property("contentY").toDouble() + step);
            settle();
            QMetaObject::invokeMethod(table, "returnToBounds");
            draw(name + u'-' + QString::number(part));
        }
    }

    void drawComposer(const QString& name) {
        settle();
        if (!_navigation.isComposerShown()) return;
        draw(name + u'-' + _navigation.composer()->kind());
        _navigation.composer()->cancel();
        settle();
    }

    // Every row that opens a page or does something. None is a switch or a choice.
    void visitRows(platform::UIViewController& page, const QString& name) {
        auto* list = dynamic_cast<platform::PSListController*>(&page);
        for (std::size_t i = 0; list && i < list->specifiers().size() && _error.isEmpty(); ++i) {
            const auto row = list->specifiers()[i];
            const auto path = list->indexPathForIndex(i);
            if (row->cellType() != platform::PSCellType::link || !path) continue;
            list->table().touchRowAtIndexPath(*path);
            drawComposer(name);
            if (&_navigation.current()->controller() == &page) continue;
            visitPage(name + u'-' + fileNameOf(_navigation.current()->title()));
            _navigation.back();
            settle();
        }
    }

    Navigation& _navigation;
    QQuickView& _view;
    QDir _folder;
    QString _error;
};

}  // namespace

void prepareForScreenshots(const DeviceShape& device) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    qputenv("QT_SCALE_FACTOR", QByteArray::number(device.screen.scale));
}

bool takeScreenshots(OpenedPhone& phone, const Options& options, std::string& error) {
    const QDir folder(QString::fromStdString(options.screenshots));
    if (!folder.mkpath(QStringLiteral("."))) {
        error = options.screenshots + ": the folder cannot be made";
        return false;
    }
    ScratchFileSystem files(phone.files);
    QuietNotifyCenter notifications;
    QuietApplication application;
    DeviceInformation deviceInformation(phone.files, phone.folder);
    Composers composers;
    SettingsSession session({files, notifications, application, deviceInformation, composers, composers},
                            phone.installation.systemImage, *options.device);
    NoHandOver handOver;
    Navigation navigation(handOver);
    SettingsWindow window(navigation);
    const platform::CGSize size = options.device->screen.bounds.size();
    if (!window.load(QSizeF(size.width, size.height).toSize(), error) || !session.loadPane(error)) return false;
    auto root = session.makeRootPage(error);
    if (!root) return false;
    window.setDark(options.dark.value_or(false));
    window.setReducedMotion(true);
    navigation.open(std::move(root));
    window.view().show();
    return Tour(navigation, window.view(), folder).run(error);
}

}  // namespace hosts::desktop
