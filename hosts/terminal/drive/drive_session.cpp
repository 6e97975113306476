// SPDX-License-Identifier: MIT
#include "hosts/terminal/drive/drive_session.h"

#include <map>
#include <utility>

#include "hosts/terminal/drive/command.h"
#include "hosts/terminal/render/page_json.h"
#include "hosts/terminal/render/value_json.h"
#include "platform/list/list_controller.h"
#include "platform/ui/button.h"

namespace hosts::terminal {
namespace {

using nlohmann::json;

json refused(const std::string& reason) {
    return {{"ok", false}, {"error", reason}};
}

std::string textOf(const json& command, const char* name) {
    auto found = command.find(name);
    return found != command.end() && found->is_string() ? found->get<std::string>() : std::string();
}

platform::Problem refusal(std::string reason) {
    return {.reason = std::move(reason)};
}

std::optional<platform::MFMailComposeResult> mailResult(const std::string& name) {
    using platform::MFMailComposeResult;
    static const std::map<std::string, MFMailComposeResult> results = {{"sent", MFMailComposeResult::sent},
                                                                       {"saved", MFMailComposeResult::saved},
                                                                       {"cancelled", MFMailComposeResult::cancelled},
                                                                       {"failed", MFMailComposeResult::failed}};
    auto found = results.find(name);
    return found == results.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

DriveSession::DriveSession(const SessionServices& outside, std::set<std::string> openableSchemes)
    : _outside(outside),
      _files(outside.listener, _events),
      _notifications(outside.notifications, _events),
      _application(std::move(openableSchemes), _events),
      _recorder(_events),
      _navigation(_recorder) {}

platform::Result<platform::Done> DriveSession::start(const std::string& systemImage, const DeviceShape& shape) {
    auto session = SettingsSession::load(
        {_outside.files, _notifications, _application, _outside.device, &_files, _outside.history, _outside.phone},
        systemImage, shape);
    if (!session) return std::move(session).error();
    _session = *std::move(session);
    auto access = _session->preferenceAccess();
    if (!access) return std::move(access).error();
    auto root = _session->makeRootPage();
    if (!root) return std::move(root).error();
    _access = *std::move(access);
    _navigation.pushViewController_animated(*std::move(root), false);
    return platform::Done();
}

json DriveSession::answer(const std::string& line) {
    const json command = readCommand(line);
    if (!command.is_object()) return refused("the line is no JSON object");
    const std::string verb = textOf(command, "do");
    const bool isQuestion = verb == "get" && command.contains("key") && command["key"].is_string();
    json answer = isQuestion ? valueAnswer(command["key"]) : pageAnswer(carryOut(command), verb == "view");
    _session->drawn();
    return answer;
}

DriveSession::Outcome DriveSession::carryOut(const json& command) {
    const std::string verb = textOf(command, "do");
    if (verb == "show" || verb == "view") return platform::Done{};
    if (verb == "tap") return tap(command);
    if (verb == "switch") return moveSwitch(command);
    if (verb == "back") return goBack();
    if (verb == "appear") return appear();
    if (verb == "reload") return reload();
    if (verb == "heart") return touchRightButton();
    if (verb == "composer") return finishComposer(command);
    if (verb == "get") return refusal("\"key\" takes a settings key");
    return refusal(verb.empty() ? "\"do\" names the command; it is missing" : "there is no command '" + verb + "'");
}

DriveSession::Outcome DriveSession::tap(const json& command) {
    // Held here: the tap may put another page on top, or release this one.
    const std::shared_ptr<platform::UIViewController> tapped = _navigation.topViewController();
    const auto path = findRow(*tapped, command);
    if (!path) return path.error();
    tableOfPage(*tapped)->touchRowAtIndexPath(*path);
    return platform::Done{};
}

DriveSession::Outcome DriveSession::moveSwitch(const json& command) {
    auto on = command.find("on");
    if (on == command.end() || !on->is_boolean()) return refusal("\"on\" takes true or false");
    const auto path = findRow(page(), command);
    if (!path) return path.error();
    auto cell =
        std::dynamic_pointer_cast<platform::PSTableCell>(tableOfPage(page())->produceCellForRowAtIndexPath(*path));
    if (!cell || !cell->isSwitch()) return refusal("the row has no switch");
    if (!cell->userMovedSwitch(on->get<bool>())) return refusal("the row is greyed");
    return platform::Done{};
}

DriveSession::Outcome DriveSession::goBack() {
    if (_navigation.popViewControllerAnimated(true)) return platform::Done{};
    return refusal("this is the first page");
}

DriveSession::Outcome DriveSession::appear() {
    page().viewWillAppear(false);
    return platform::Done{};
}

DriveSession::Outcome DriveSession::reload() {
    auto* list = dynamic_cast<platform::PSListController*>(&page());
    if (!list) return refusal("the page is no list of rows to reload");
    list->reloadSpecifiers();
    return platform::Done{};
}

DriveSession::Outcome DriveSession::touchRightButton() {
    platform::UIButton* const button = rightButtonOf(page());
    if (!button) return refusal("the page has no right-hand item");
    button->sendActionsForControlEvents(platform::UIControlEventTouchUpInside);
    return platform::Done{};
}

DriveSession::Outcome DriveSession::finishComposer(const json& command) {
    const std::string name = textOf(command, "result");
    const auto result = mailResult(name);
    if (!result) return refusal("\"result\" takes \"sent\", \"saved\", \"cancelled\" or \"failed\"");
    if (_navigation.presented().empty()) return refusal("no composer is presented");
    const std::shared_ptr<platform::UIViewController> composer = _navigation.presented().back();
    if (auto* mail = dynamic_cast<platform::MFMailComposeViewController*>(composer.get())) {
        mail->finish(*result);
        return platform::Done{};
    }
    auto* post = dynamic_cast<platform::SLComposeViewController*>(composer.get());
    if (!post) return refusal("what is presented is no composer");
    const bool sent = *result == platform::MFMailComposeResult::sent;
    if (!sent && *result != platform::MFMailComposeResult::cancelled) {
        return refusal("a post is \"sent\" or \"cancelled\"; it cannot be '" + name + "'");
    }
    post->finish(sent ? platform::SLComposeViewControllerResult::done
                      : platform::SLComposeViewControllerResult::cancelled);
    return platform::Done{};
}

json DriveSession::valueAnswer(const std::string& key) const {
    const auto value = _access->preferenceForKey(key);
    return {{"ok", true}, {"kind", kindOf(value)}, {"value", AnswerValues().jsonOf(value)}};
}

json DriveSession::pageAnswer(const Outcome& outcome, bool withViews) {
    // First the page: what producing its cells does is among the same answer's events.
    const PageSnapshot snapshot = PageSnapshot::of(page());
    _session->land();
    json answer = outcome ? json{{"ok", true}} : refused(outcome.error().reason);
    answer["page"] = pageJson(snapshot);
    if (withViews) answer["view"] = viewTreeJson(page(), snapshot);
    answer["events"] = _events.take();
    return answer;
}

}  // namespace hosts::terminal
