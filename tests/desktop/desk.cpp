// SPDX-License-Identifier: MIT
#include "tests/desktop/desk.h"

#include <QAccessible>
#include <QTest>
#include <algorithm>
#include <filesystem>
#include <stdexcept>

#include "tests/desktop/settings_text.h"

namespace desktop_tests {
namespace {

constexpr const char* settingsPath = "/var/mobile/Library/Preferences/com.fenwary.trivel3.plist";
constexpr int patience = 5000;  // ms

QQuickItem* find(QQuickItem* within, const std::function<bool(QQuickItem*)>& fits) {
    if (fits(within)) return within;
    for (QQuickItem* child : within->childItems()) {
        if (QQuickItem* found = find(child, fits)) return found;
    }
    return nullptr;
}

std::string mailText(const platform::MFMailComposeViewController& mail) {
    std::string text = mail.subject();
    for (const auto& attachment : mail.attachments())
        text += " " + attachment.fileName + (attachment.data ? "" : " (no data)");
    return text;
}

}  // namespace

hosts::MailHandOver NotedHandOver::sendMail(const platform::MFMailComposeViewController& mail,
                                            const std::string& draftFolder) {
    asked = draftFolder;
    sent.push_back(mailText(mail));
    return {program, draft};
}

platform::Result<std::string> NotedHandOver::saveDraft(const platform::MFMailComposeViewController& mail,
                                                       const std::string& draftFolder) {
    asked = draftFolder;
    saved.push_back(mailText(mail));
    return draft;
}

platform::Result<platform::Done> NotedHandOver::post(std::string_view, std::string_view text) {
    posted.emplace_back(text);
    return opened;
}

Desk::Desk() : phoneFolder(folder.path() / "phone") {
    std::filesystem::copy(TRIVEL3_SAMPLE_PHONE, phoneFolder, std::filesystem::copy_options::recursive);
    hosts::PhoneOptions options;
    options.phone = phoneFolder;
    auto opened = hosts::OpenedPhone::open(options, "desktop_test");
    if (!opened) throw std::runtime_error(opened.error().text());
    opened->installation.systemImage = TRIVEL3_SYSTEM_IMAGE;
    phone.emplace(*std::move(opened));
}

Desk::~Desk() {
    session.reset();
    settle();
}

void Desk::open(bool lessMotion, const char* device) {
    const hosts::DeviceShape* shape = hosts::findDeviceShape(device);
    session = std::make_unique<hosts::desktop::DesktopSession>(hosts::desktop::DesktopSession::Outside{
        *phone,
        {phone->phone->files(), _notifications, *application, phone->phone->device(), &phone->history->recorder,
         phone->history.get()},
        handOver,
        *shape});
    const platform::CGSize size = shape->screen.bounds.size();
    const auto isOpen = session->open(QSizeF(size.width, size.height).toSize());
    ASSERT_TRUE(isOpen) << isOpen.error().text();
    session->window().setReducedMotion(lessMotion);
    view().show();
    view().requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view(), patience));
    settle();
}

void Desk::openPage(const QStringList& titles) {
    for (const QString& wanted : titles) {
        const int line = lineOf(wanted);
        ASSERT_GE(line, 0) << wanted.toStdString();
        table().tap(line);
        ASSERT_TRUE(waitFor([&] { return title() == wanted && seenTable(); })) << title().toStdString();
        settle();
    }
}

void Desk::writeSettings(const std::string& entries) {
    const std::string content =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" + entries + "</dict></plist>\n";
    ASSERT_TRUE(phone->phone->files().changeFile(settingsPath, [content](std::optional<std::string_view>) {
        return platform::Result(platform::NewContent{content});
    }));
}

std::string Desk::settings() const {
    std::string contents;
    if (!phone->phone->files().readFile(settingsPath, contents)) return {};
    return contents;
}

bool Desk::settingIs(const std::string& key, const std::string& element) const {
    return holdsSetting(settings(), key, element);
}

bool Desk::waitFor(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, patience);
}

void Desk::settle() {
    constexpr int severalFrames = 50;  // ms
    QTest::qWait(severalFrames);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool Desk::isShown(const QQuickItem* item) {
    return item && item->isVisible() && item->opacity() > 0;
}

QQuickItem* Desk::seenTable() {
    return tableOf(navigation().current());
}

QQuickItem* Desk::tableOf(hosts::desktop::Page* page) {
    return find(view().rootObject(), [page](QQuickItem* item) {
        return item->objectName() == QLatin1String("table") && item->isVisible() && item->isEnabled() &&
               item->property("page").value<hosts::desktop::Page*>() == page;
    });
}

std::vector<QQuickItem*> Desk::lines() {
    std::vector<QQuickItem*> found;
    QQuickItem* table = seenTable();
    if (!table) return found;
    for (QQuickItem* item : table->property("contentItem").value<QQuickItem*>()->childItems()) {
        // Those that are on their way out, or kept for later, are no lines of the table.
        if (item->property("last").isValid() || item->property("bare").isValid() || item->property("first").isValid()) {
            if (isShown(item) && item->height() >= 0) found.push_back(item);
        }
    }
    std::ranges::sort(found, {}, [](QQuickItem* item) { return item->y(); });
    return found;
}

QStringList Desk::rowLabels() {
    QStringList labels;
    for (QQuickItem* line : lines()) {
        if (line->property("lineId").isValid()) labels.append(line->property("text").toString());
    }
    return labels;
}

bool Desk::shows(const QString& label) {
    return shownRow(label) != nullptr;
}

QQuickItem* Desk::row(const QString& label) {
    constexpr int contain = 4;  // ListView.Contain
    const int line = lineOf(label);
    if (line < 0) throw std::runtime_error("no row '" + label.toStdString() + "'");
    QMetaObject::invokeMethod(seenTable(), "positionViewAtIndex", Q_ARG(int, line), Q_ARG(int, contain));
    settle();
    QQuickItem* shown = shownRow(label);
    if (!shown) throw std::runtime_error("row '" + label.toStdString() + "' is not drawn");
    return shown;
}

QQuickItem* Desk::shownRow(const QString& label) {
    for (QQuickItem* line : lines()) {
        if (line->property("lineId").isValid() && line->property("text").toString() == label) return line;
    }
    return nullptr;
}

int Desk::lineOf(const QString& label) {
    auto& model = table();
    for (int i = model.rowBeside(-1, 1); i >= 0; i = model.rowBeside(i, 1)) {
        if (model.data(model.index(i), hosts::desktop::TableModel::TextRole).toString() == label) return i;
    }
    return -1;
}

QQuickItem* Desk::named(QQuickItem* within, const QString& name) {
    return find(within, [&name](QQuickItem* item) {
        if (!isShown(item)) return false;
        QAccessibleInterface* access = QAccessible::queryAccessibleInterface(item);
        return access && access->text(QAccessible::Name) == name && access->role() != QAccessible::StaticText;
    });
}

void Desk::click(QQuickItem* item) {
    ASSERT_NE(item, nullptr);
    click(item, QPointF(item->width() / 2, item->height() / 2));
}

void Desk::click(QQuickItem* item, QPointF at) {
    ASSERT_NE(item, nullptr);
    QTest::mouseClick(&view(), Qt::LeftButton, {}, item->mapToScene(at).toPoint());
    settle();
}

void Desk::clickSwitch(const QString& label) {
    QQuickItem* line = row(label);
    click(line, QPointF(line->width() - 40, line->height() / 2));
}

void Desk::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&view(), key, modifiers);
    settle();
}

void Desk::drag(QQuickItem* item, QPointF from, QPointF to) {
    constexpr int steps = 8;
    QTest::mousePress(&view(), Qt::LeftButton, {}, item->mapToScene(from).toPoint());
    const QPointF begin = item->mapToScene(from);
    const QPointF end = item->mapToScene(to);
    for (int i = 1; i <= steps; ++i)
        QTest::mouseMove(&view(), (begin + (end - begin) * i / steps).toPoint());
    QTest::mouseRelease(&view(), Qt::LeftButton, {}, end.toPoint());
    settle();
}

}  // namespace desktop_tests
