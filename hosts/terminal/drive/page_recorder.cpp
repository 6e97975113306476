// SPDX-License-Identifier: MIT
#include "hosts/terminal/drive/page_recorder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

#include "platform/list/list_controller.h"
#include "platform/services/mail_composer.h"
#include "platform/services/post_composer.h"

namespace hosts::terminal {
namespace {

using nlohmann::json;

json rowLabel(const platform::PSSpecifier& row) {
    if (row.cellType() == platform::PSCellType::group) return nullptr;
    return row.name();
}

// Writes a copy into a new folder of its own below $TMPDIR, or /tmp, for whoever drives the program: it
// is theirs to remove, since they may read it after the program has ended. Nothing when that fails, or
// when `name` is no plain file name.
std::optional<std::string> copyAttachment(const std::string& name, const std::string& data) {
    if (name.empty() || name.find('/') != name.npos || name == "." || name == "..") return std::nullopt;
    const char* configured = std::getenv("TMPDIR");
    std::string folder = std::string(configured && *configured ? configured : "/tmp") + "/trivel3-XXXXXX";
    if (!::mkdtemp(folder.data())) return std::nullopt;
    std::string path = folder + "/" + name;
    std::ofstream file(path, std::ios::binary);
    file << data << std::flush;
    if (file) return path;
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    return std::nullopt;
}

json attachmentJson(const platform::MFMailComposeViewController::Attachment& attachment) {
    json described = {
        {"name", attachment.fileName}, {"type", attachment.mimeType}, {"bytes", nullptr}, {"path", nullptr}};
    if (!attachment.data) return described;
    described["bytes"] = attachment.data->size();
    if (auto path = copyAttachment(attachment.fileName, *attachment.data)) described["path"] = *path;
    return described;
}

json mailJson(const platform::MFMailComposeViewController& mail) {
    json attachments = json::array();
    for (const auto& attachment : mail.attachments())
        attachments.push_back(attachmentJson(attachment));
    return {{"composer", "mail"},
            {"subject", mail.subject()},
            {"to", mail.toRecipients()},
            {"body", nullptr},
            {"attachments", std::move(attachments)}};
}

json composerJson(const platform::UIViewController* presented) {
    if (auto* mail = dynamic_cast<const platform::MFMailComposeViewController*>(presented)) return mailJson(*mail);
    if (auto* post = dynamic_cast<const platform::SLComposeViewController*>(presented)) {
        return {{"composer", "post"}, {"service", post->serviceType()}, {"text", post->text()}};
    }
    return {{"composer", nullptr}};
}

}  // namespace

void PageRecorder::didPush(platform::UIViewController& page, bool) {
    if (auto* list = dynamic_cast<platform::PSListController*>(&page)) list->setTableHost(this);
    if (_rootIsShown) _events.add({{"event", "push"}, {"class", page.className()}});
    _rootIsShown = true;
}

void PageRecorder::didPop(platform::UIViewController& page, platform::UIViewController& gone, bool) {
    if (auto* list = dynamic_cast<platform::PSListController*>(&gone)) list->setTableHost(nullptr);
    _events.add({{"event", "pop"}, {"class", page.className()}});
}

void PageRecorder::didPresent(const std::shared_ptr<platform::UIViewController>& presented, bool animated) {
    json event = composerJson(presented.get());
    event["event"] = "present";
    event["animated"] = animated;
    _events.add(std::move(event));
}

void PageRecorder::didDismiss(bool animated) {
    _events.add({{"event", "dismiss"}, {"animated", animated}});
}

void PageRecorder::reloadTable(platform::PSListController&) {}

void PageRecorder::reloadRow(platform::PSListController& page, std::size_t position, bool animated) {
    _events.add({{"event", "reload"},
                 {"row", rowLabel(*page.specifiers()[position])},
                 {"position", position},
                 {"animated", animated}});
}

void PageRecorder::insertRows(platform::PSListController&, std::size_t position, Rows rows, bool animated) {
    noteRows("insert", position, rows, animated);
}

void PageRecorder::removeRows(platform::PSListController&, std::size_t position, Rows rows, bool animated) {
    noteRows("remove", position, rows, animated);
}

void PageRecorder::noteRows(const char* event, std::size_t position, Rows rows, bool animated) {
    json labels = json::array();
    for (const auto& row : rows)
        labels.push_back(rowLabel(*row));
    _events.add({{"event", event}, {"rows", std::move(labels)}, {"position", position}, {"animated", animated}});
}

}  // namespace hosts::terminal
