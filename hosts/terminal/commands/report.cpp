// SPDX-License-Identifier: MIT
#include <algorithm>
#include <memory>
#include <optional>
#include <string>

#include "hosts/session/exit_status.h"
#include "hosts/session/services.h"
#include "hosts/session/settings_session.h"
#include "hosts/session/title_path.h"
#include "hosts/terminal/commands/commands.h"
#include "hosts/terminal/commands/output_file.h"
#include "platform/list/list_controller.h"
#include "platform/services/mail_composer.h"

namespace hosts::terminal {
namespace {

using platform::MFMailComposeViewController;

// A report tells of a person's phone.
constexpr mode_t forTheUserAlone = 0600;

/// Keeps the attachment of the first e-mail that a page presents, and shows nothing.
class AttachmentCatcher final : public platform::NavigationHost {
public:
    const std::optional<std::string>& attachment() const { return _attachment; }

    void didPush(platform::UIViewController&, bool) override {}
    void didPop(platform::UIViewController&, platform::UIViewController&, bool) override {}
    void didPresent(const std::shared_ptr<platform::UIViewController>& presented, bool) override {
        const auto mail = std::dynamic_pointer_cast<MFMailComposeViewController>(presented);
        if (mail && !_attachment && !mail->attachments().empty()) _attachment = mail->attachments().front().data;
    }
    void didDismiss(bool) override {}

private:
    std::optional<std::string> _attachment;
};

// The rows of the first page that act are used in their order, until one composes the e-mail to the support desk.
// Nothing leaves the program by that.
std::optional<std::string> supportReport(SettingsSession& session) {
    auto root = session.makeRootPage();
    if (!root) return std::nullopt;
    AttachmentCatcher catcher;
    platform::UINavigationController navigation(catcher);
    navigation.pushViewController_animated(*std::move(root), false);
    auto* const list = dynamic_cast<platform::PSListController*>(navigation.topViewController().get());
    if (!list) return std::nullopt;
    const platform::PSListController::Specifiers rows = list->specifiers();
    for (const auto& row : rows) {
        if (row->action && !isPageLink(*row)) row->action(*row);
        if (catcher.attachment()) break;
    }
    return catcher.attachment();
}

}  // namespace

int runReport(OpenedPhone& context, const ReportOptions& options) {
    QuietServices services(context);
    const auto session = SettingsSession::load(services.forSession(), context.installation.systemImage, context.shape);
    if (!session) return fail(failed, session.error());
    const auto report = supportReport(**session);
    if (const auto problem = context.outcomes->takeProblem()) return fail(failed, *problem);
    if (!report) return fail(failed, "the pane makes no report");
    const auto written = writeOutput(options.output, *report, forTheUserAlone);
    return written ? done : fail(failed, written.error());
}

}  // namespace hosts::terminal
