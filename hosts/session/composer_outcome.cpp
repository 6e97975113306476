// SPDX-License-Identifier: MIT
#include "hosts/session/composer_outcome.h"

namespace hosts {

namespace {

using platform::MFMailComposeResult;
using Weight = ComposerOutcome::Weight;

ComposerOutcome outcomeOf(const MailHandOver& mail) {
    if (mail.program && mail.draft) {
        return {true, Weight::plain, "The e-mail is open in " + *mail.program + "; draft: " + *mail.draft};
    }
    if (mail.program) {
        return {true, Weight::problem,
                "The e-mail is open in " + *mail.program + ", but no draft was saved: " + mail.draft.error().text()};
    }
    const std::string reason = mail.program.error().text();
    if (mail.draft) return {true, Weight::problem, "Not sent (" + reason + "); draft: " + *mail.draft};
    return {false, Weight::problem,
            "The e-mail was not sent (" + reason + "), and no draft was saved: " + mail.draft.error().text()};
}

}  // namespace

ComposerOutcome sendMail(platform::MFMailComposeViewController& mail, HandOver& handOver) {
    const MailHandOver handed = handOver.sendMail(mail);
    ComposerOutcome outcome = outcomeOf(handed);
    if (outcome.isFinished) mail.finish(handed.program ? MFMailComposeResult::sent : MFMailComposeResult::saved);
    return outcome;
}

ComposerOutcome saveMail(platform::MFMailComposeViewController& mail, HandOver& handOver) {
    const auto draft = handOver.saveDraft(mail);
    if (!draft) return {false, Weight::problem, "The e-mail was not saved: " + draft.error().text()};
    mail.finish(MFMailComposeResult::saved);
    return {true, Weight::news, "Draft: " + *draft};
}

ComposerOutcome post(platform::SLComposeViewController& composer, const std::string& text, HandOver& handOver) {
    const auto posted = handOver.post(composer.serviceType(), text);
    if (!posted) {
        const std::string& address = posted.error().path;
        return {false, Weight::problem,
                "Not opened: " + posted.error().reason + (address.empty() ? "" : " " + address)};
    }
    composer.finish(platform::SLComposeViewControllerResult::done);
    return {true, Weight::plain, "The post is open in your browser"};
}

}  // namespace hosts
