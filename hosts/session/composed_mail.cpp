// SPDX-License-Identifier: MIT
#include "hosts/session/composed_mail.h"

#include <cstdlib>
#include <utility>

#include "platform/foundation/ascii.h"

namespace hosts {

namespace {

using platform::MFMailComposeResult;
using Weight = ComposerOutcome::Weight;

}  // namespace

std::optional<std::string> ComposedMail::folderToAskFor() {
    auto folder = _handOver.draftFolder();
    if (!folder || folder->isThere) return std::nullopt;
    return std::move(folder->path);
}

platform::Result<std::string> ComposedMail::folderNamed(std::string_view typed) {
    const std::string_view folder = platform::trimmed(typed);
    if (folder.starts_with('/')) return std::string(folder);
    const char* const home = std::getenv("HOME");
    if (home && (folder == "~" || folder.starts_with("~/"))) return home + std::string(folder.substr(1));
    return platform::Problem{.reason = "A folder's path begins with / or ~/"};
}

ComposerOutcome ComposedMail::handOver(Way way, const std::string& folder) {
    return way == Way::send ? send(folder) : saveDraft(folder);
}

ComposerOutcome ComposedMail::handOver(Way way) {
    const auto folder = _handOver.draftFolder();
    if (folder) return handOver(way, folder->path);
    return fail("The e-mail was neither sent nor saved: " + folder.error().text());
}

ComposerOutcome ComposedMail::send(const std::string& folder) {
    const MailHandOver handed = _handOver.sendMail(*_composer, folder);
    if (handed.program && handed.draft) {
        return finish(MFMailComposeResult::sent,
                      {Weight::plain, "The e-mail is open in " + *handed.program + "; draft: " + *handed.draft});
    }
    if (handed.program) {
        return finish(MFMailComposeResult::sent,
                      {Weight::problem, "The e-mail is open in " + *handed.program +
                                            ", but no draft was saved: " + handed.draft.error().text()});
    }
    const std::string reason = handed.program.error().text();
    if (!handed.draft) {
        return fail("The e-mail was not sent (" + reason + "), and no draft was saved: " + handed.draft.error().text());
    }
    return finish(MFMailComposeResult::saved,
                  {Weight::problem, "Not sent (" + reason + "); draft: " + *handed.draft, true, anotherTry()});
}

ComposerOutcome ComposedMail::saveDraft(const std::string& folder) {
    const auto draft = _handOver.saveDraft(*_composer, folder);
    if (!draft) return fail("The e-mail was not saved: " + draft.error().text());
    return finish(MFMailComposeResult::saved, {Weight::news, "Draft: " + *draft});
}

ComposerOutcome ComposedMail::finish(MFMailComposeResult result, ComposerOutcome outcome) {
    _composer->finish(result, result == MFMailComposeResult::failed ? outcome.text : std::string());
    return outcome;
}

ComposerOutcome ComposedMail::fail(std::string text) {
    return finish(MFMailComposeResult::failed, {Weight::problem, std::move(text), true, anotherTry()});
}

// By the page that has presented this one: it is the one to dismiss the other too.
std::function<void()> ComposedMail::anotherTry() const {
    return [page = std::weak_ptr(_composer->presentingViewController()), composer = _composer->copy()] {
        if (const auto presenting = page.lock())
            presenting->presentViewController_animated_completion(composer, true, nullptr);
    };
}

}  // namespace hosts
