// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QQuickItem>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "hosts/desktop/program/desktop_session.h"
#include "hosts/session/services.h"
#include "tests/kit/changed_variable.h"
#include "tests/kit/temporary_folder.h"

namespace desktop_tests {

/// Where composed things go in a test: they are noted.
class NotedHandOver final : public hosts::HandOver {
public:
    platform::Result<hosts::DocumentsFolder> draftFolder() override { return folder; }
    hosts::MailHandOver sendMail(const platform::MFMailComposeViewController& mail,
                                 const std::string& draftFolder) override;
    platform::Result<std::string> saveDraft(const platform::MFMailComposeViewController& mail,
                                            const std::string& draftFolder) override;
    platform::Result<platform::Done> post(std::string_view serviceType, std::string_view text) override;

    std::vector<std::string> sent;
    std::vector<std::string> saved;
    std::vector<std::string> posted;
    /// Where the last draft was to go.
    std::string asked;
    /// Where drafts go.
    hosts::DocumentsFolder folder{"/home/user", true};
    /// What becomes of each.
    platform::Result<std::string> program{std::string("Post Office")};
    platform::Result<std::string> draft{std::string("/home/user/Trivel Support.eml")};
    platform::Result<platform::Done> opened{platform::Done()};
};

/// A window on the desk: a phone of its own in a folder of its own, and the pane in a window before
/// the user, who has a mouse and keys.
class Desk : public testing::Test {
protected:
    Desk();
    ~Desk() override;

    /// Opens the window on the root page; before that, the phone can be prepared.
    void open(bool lessMotion = true, const char* device = "phone-4");
    /// Opens the page that the titles lead to from the root page, by tapping its rows.
    void openPage(const QStringList& titles);

    /// The phone's settings file as another process would write it.
    void writeSettings(const std::string& entries);
    /// The settings file's content; empty when there is none.
    std::string settings() const;
    bool settingIs(const std::string& key, const std::string& element) const;

    /// Waits for as long as it may take until the condition holds.
    static bool waitFor(const std::function<bool()>& condition);
    /// Lets everything happen that is due, drawing included.
    static void settle();

    hosts::desktop::Navigation& navigation() { return session->navigation(); }
    QQuickView& view() { return session->window().view(); }
    hosts::desktop::TableModel& table() { return *navigation().current()->table(); }
    QString title() { return navigation().current()->title(); }

    /// The table of a page that is in view and takes keys; null for any other.
    QQuickItem* tableOf(hosts::desktop::Page* page);
    /// That of the page that is open, and its rows, headers and footers from top to bottom.
    QQuickItem* seenTable();
    std::vector<QQuickItem*> lines();
    QStringList rowLabels();
    /// Whether such a row is on the screen.
    bool shows(const QString& label);
    /// The row, brought on the screen. Throws when the page has no such row.
    QQuickItem* row(const QString& label);
    /// The line's number in the table's model; -1 when there is none.
    int lineOf(const QString& label);

    /// An item's descendant by its accessible name; null when there is none.
    static QQuickItem* named(QQuickItem* within, const QString& name);
    static bool isShown(const QQuickItem* item);

    void click(QQuickItem* item);
    void click(QQuickItem* item, QPointF at);
    /// Clicks the switch of a row.
    void clickSwitch(const QString& label);
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Moves the mouse with its button down.
    void drag(QQuickItem* item, QPointF from, QPointF to);
    QString bannerText() { return navigation().banners().text(); }

    kit::TemporaryFolder folder;
    /// What is kept of the phone goes with it.
    kit::ChangedVariable keptState{"XDG_STATE_HOME", (folder / "state").c_str()};
    std::string phoneFolder;
    std::optional<hosts::OpenedPhone> phone;
    NotedHandOver handOver;
    std::unique_ptr<hosts::desktop::DesktopSession> session;

    /// Opens the pane's addresses: nowhere, unless a test has another.
    hosts::QuietApplication noPrograms;
    platform::UIApplication* application = &noPrograms;

private:
    QQuickItem* shownRow(const QString& label);

    hosts::QuietNotifyCenter _notifications;
};

}  // namespace desktop_tests
