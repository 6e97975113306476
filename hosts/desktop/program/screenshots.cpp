// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/screenshots.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QQuickItem>
#include <QRegularExpression>

#include "hosts/desktop/program/desktop_session.h"
#include "hosts/desktop/program/phone_opener.h"
#include "hosts/desktop/program/window_size.h"
#include "hosts/session/page_snapshot.h"

namespace hosts::desktop {
namespace {

// What two pictures of a long page have in common, in points.
constexpr double pictureOverlap = 60;

QString fileNameOf(const QString& title) {
    static const QRegularExpression others(QStringLiteral("[^\\p{L}\\p{N}]+"));
    QString name = title.toLower().replace(others, QStringLiteral("-"));
    while (name.endsWith(u'-'))
        name.chop(1);
    return name.isEmpty() ? QStringLiteral("page") : name;
}

// The page's own; null for a page that is no table.
QQuickItem* tableOf(const Page* page, const QQuickItem& within) {
    if (within.objectName() == QLatin1String("table") && within.property("page").value<Page*>() == page) {
        return const_cast<QQuickItem*>(&within);
    }
    for (const QQuickItem* child : within.childItems()) {
        if (QQuickItem* table = tableOf(page, *child)) return table;
    }
    return nullptr;
}

// Goes through the pages of a window and draws what it comes by.
class Tour {
public:
    Tour(Navigation& navigation, QQuickView& view, QDir folder)
        : _navigation(navigation), _view(view), _folder(std::move(folder)) {}

    platform::Result<platform::Done> run() {
        visitPage(fileNameOf(_navigation.current()->title()));
        _navigation.find().begin(QStringLiteral("display"));
        draw(QStringLiteral("find"));
        _navigation.find().close();
        _navigation.phones().begin();
        draw(QStringLiteral("phones"));
        _navigation.phones().close();
        drawMenus();
        drawRowMenu();
        if (_error.isEmpty()) return platform::Done();
        return platform::Problem{.reason = _error.toStdString()};
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
        if (_navigation.banners().isShown() && !_navigation.banners().isStaying())
            _error = _navigation.banners().text();
    }

    void drawMenus() {
        emit _navigation.menuAsked();
        draw(QStringLiteral("menu"));
        _navigation.menu().close();
        for (const auto& [sheet, name] : {std::pair{Commands::KeysSheet, "keys"}, {Commands::AboutSheet, "about"}}) {
            _navigation.commands().showSheet(sheet);
            draw(QString::fromLatin1(name));
        }
        _navigation.commands().closeSheet();
    }

    // The switch is moved in memory alone.
    void drawRowMenu() {
        TableModel& table = *_navigation.current()->table();
        int last = -1;
        for (int row = table.rowBeside(-1, 1); row >= 0; row = table.rowBeside(row, 1)) {
            if (table.data(table.index(row), TableModel::KindRole) == QLatin1String("switch")) last = row;
        }
        table.activate(last);
        QMetaObject::invokeMethod(tableOf(_navigation.current(), *_view.rootObject()), "openMenu",
                                  Q_ARG(QVariant, last), Q_ARG(QVariant, QVariant()));
        draw(QStringLiteral("row-menu"));
        _navigation.menu().close();
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
        QQuickItem* table = tableOf(_navigation.current(), *_view.rootObject());
        bool goesOn = table && !table->property("atYEnd").toBool();
        for (int part = 2; goesOn; ++part) {
            goesOn = scrollOn(*table);
            draw(name + u'-' + QString::number(part));
        }
        if (table) QMetaObject::invokeMethod(table, "positionViewAtBeginning");
    }

    // By nearly a screen, so that no row is cut in every picture. False at the end.
    bool scrollOn(QQuickItem& table) {
        auto number = [&table](const char* name) { return table.property(name).toDouble(); };
        const double next = number("contentY") + table.height() - pictureOverlap;
        const double last = number("originY") + number("contentHeight") - table.height();
        if (next < last) {
            table.setProperty("contentY", next);
            settle();
            return true;
        }
        // Twice: how long the table is shows only when its last lines have been made.
        for (int i = 0; i < 2; ++i) {
            QMetaObject::invokeMethod(&table, "positionViewAtEnd");
            settle();
        }
        return false;
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
            // A page whose link the settings grey has its picture taken all the same.
            if (row->isEnabled() || !list->openDetailPage(row)) list->table().touchRowAtIndexPath(*path);
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

platform::Result<platform::Done> takeScreenshots(OpenedPhone& phone, const Options& options) {
    const QDir folder(QString::fromStdString(options.screenshots));
    if (!folder.mkpath(QStringLiteral("."))) {
        return platform::Problem{options.screenshots, {}, "the folder cannot be made"};
    }
    // Told on standard error already, and not to be in the pictures.
    phone.outcomes->takeRemarks();
    QuietServices services(phone);
    NoHandOver handOver;
    DesktopSession session({phone, services.forSession(), handOver, phone.shape});
    const auto opened = session.open(options.size.value_or(screenSize(phone.shape)));
    if (!opened) return opened;
    session.navigation().phones().use(knownAs(phone), {});
    session.window().setTaste(options.over({.lessMotion = true, .accent = std::nullopt}));
    session.window().view().show();
    return Tour(session.navigation(), session.window().view(), folder).run();
}

}  // namespace hosts::desktop
