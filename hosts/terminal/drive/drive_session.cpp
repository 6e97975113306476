// SPDX-License-Identifier: MIT
#include "hosts/terminal/drive/drive_session.h"

#include <map>
#include <utility>

#include "hosts/terminal/drive/command_reader.h"
#include "hosts/terminal/drive/row_reference.h"
#include "hosts/terminal/render/page_json.h"
#include "hosts/terminal/render/value_json.h"
#include "hosts/terminal/render/view_json.h"
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

json rowOf(const json& command) {
    auto found = command.find("row");
    return found == command.end() ? json(nullptr) : *found;
}

std::optional<platform::MFMailComposeResult> mailResult(const std::string& name) {
    using Result = platform::MFMailComposeResult;
    static const std::map<std::string, Result> results = {
        {"sent", Result::sent}, {"saved", Result::saved}, {"cancelled", Result::cancelled}, {"failed", Result::failed}};
    auto found = results.find(name);
    return found == results.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

DriveSession::DriveSession(OpenedPhone& phone, std::set<std::string> openableSchemes)
    : _phone(phone),
      _files(*phone.outcomes, _events),
      _notifications(phone.phone->notifications(), _events),
      _application(std::move(openableSchemes), _events),
      _recorder(_events),
      _navigation(_recorder) {}

platform::Result<platform::Done> DriveSession::start() {
    Phone& phone = *_phone.phone;
    auto session = SettingsSession::load({phone.files(), _notifications, _application, phone.device(), &_files},
                                         _phone.installation.systemImage, _phone.shape);
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

DriveSession::Refusal DriveSession::carryOut(const json& command) {
    const std::string verb = textOf(command, "do");
    if (verb == "show" || verb == "view") return std::nullopt;
    if (verb == "tap") return tap(command);
    if (verb == "switch") return moveSwitch(command);
    if (verb == "back") return goBack();
    if (verb == "appear") return appear();
    if (verb == "reload") return reload();
    if (verb == "heart") return touchHeart();
    if (verb == "composer") return finishComposer(command);
    if (verb == "get") return "\"key\" takes a settings key";
    return verb.empty() ? "\"do\" names the command; it is missing" : "there is no command '" + verb + "'";
}

DriveSession::Refusal DriveSession::tap(const json& command) {
    // Held here: the tap may put another page on top, or release this one.
    const std::shared_ptr<platform::UIViewController> tapped = _navigation.topViewController();
    std::string error;
    auto path = findRow(*tapped, rowOf(command), error);
    if (!path) return error;
    tableOfPage(*tapped)->touchRowAtIndexPath(*path);
    return std::nullopt;
}

DriveSession::Refusal DriveSession::moveSwitch(const json& command) {
    auto on = command.find("on");
    if (on == command.end() || !on->is_boolean()) return "\"on\" takes true or false";
    std::string error;
    auto path = findRow(page(), rowOf(command), error);
    if (!path) return error;
    auto cell =
        std::dynamic_pointer_cast<platform::PSTableCell>(tableOfPage(page())->produceCellForRowAtIndexPath(*path));
    if (!cell || !cell->isSwitch()) return "the row has no switch";
    if (!cell->userMovedSwitch(on->get<bool>())) return "the row is greyed";
    return std::nullopt;
}

DriveSession::Refusal DriveSession::goBack() {
    if (_navigation.popViewControllerAnimated(true)) return std::nullopt;
    return "this is the first page";
}

DriveSession::Refusal DriveSession::appear() {
    page().viewWillAppear(false);
    return std::nullopt;
}

DriveSession::Refusal DriveSession::reload() {
    auto* list = dynamic_cast<platform::PSListController*>(&page());
    if (!list) return "the page is no list of rows to reload";
    list->reloadSpecifiers();
    return std::nullopt;
}

DriveSession::Refusal DriveSession::touchHeart() {
    const auto& item = page().navigationItem().rightBarButtonItem();
    auto* button = item ? dynamic_cast<platform::UIButton*>(item->customView().get()) : nullptr;
    if (!button) return "the page has no right-hand item";
    button->sendActionsForControlEvents(platform::UIControlEventTouchUpInside);
    return std::nullopt;
}

DriveSession::Refusal DriveSession::finishComposer(const json& command) {
    const std::string name = textOf(command, "result");
    const auto result = mailResult(name);
    if (!result) return "\"result\" takes \"sent\", \"saved\", \"cancelled\" or \"failed\"";
    if (_navigation.presented().empty()) return "no composer is presented";
    const std::shared_ptr<platform::UIViewController> composer = _navigation.presented().back();
    if (auto* mail = dynamic_cast<platform::MFMailComposeViewController*>(composer.get())) {
        mail->finish(*result);
        return std::nullopt;
    }
    auto* post = dynamic_cast<platform::SLComposeViewController*>(composer.get());
    if (!post) return "what is presented is no composer";
    const bool sent = *result == platform::MFMailComposeResult::sent;
    if (!sent && *result != platform::MFMailComposeResult::cancelled) {
        return "a post is \"sent\" or \"cancelled\"; it cannot be '" + name + "'";
    }
    post->finish(sent ? platform::SLComposeViewControllerResult::done
                      : platform::SLComposeViewControllerResult::cancelled);
    return std::nullopt;
}

json DriveSession::valueAnswer(const std::string& key) const {
    const auto value = _access->preferenceForKey(key);
    return {{"ok", true}, {"kind", kindOf(value)}, {"value", jsonOf(value)}};
}

json DriveSession::pageAnswer(const Refusal& refusal, bool withViews) {
    // First the page: what producing its cells does is among the same answer's events.
    const PageSnapshot snapshot = PageSnapshot::of(page());
    json answer = refusal ? refused(*refusal) : json{{"ok", true}};
    answer["page"] = pageJson(snapshot);
    if (withViews) answer["view"] = viewTreeJson(page(), snapshot);
    answer["events"] = _events.take();
    return answer;
}

}  // namespace hosts::terminal
