// SPDX-License-Identifier: MIT
#include "hosts/desktop/program/linux_hand_over.h"

#include "hosts/hand_over/post_link.h"

namespace hosts::desktop {
namespace {

std::string draftSentence(const MailHandOver& result) {
    return result.draft ? "The draft is in " + *result.draft + "." : std::string();
}

std::string joined(const std::string& first, const std::string& second) {
    return first.empty() || second.empty() ? first + second : first + "\n" + second;
}

}  // namespace

HandOver::Outcome LinuxHandOver::sendMail(const platform::MFMailComposeViewController& mail) {
    const MailHandOver result = _mail.send(mail);
    if (!result) return {false, "The message could not be handed over: " + result.error};
    if (result.program) return {true, {}};
    return {true, joined("No mail program took the message: " + result.error, draftSentence(result))};
}

HandOver::Outcome LinuxHandOver::saveMail(const platform::MFMailComposeViewController& mail) {
    const MailHandOver result = _mail.saveDraft(mail);
    if (!result) return {false, "The draft could not be saved: " + result.error};
    return {true, draftSentence(result)};
}

HandOver::Outcome LinuxHandOver::post(const platform::SLComposeViewController& composer, const std::string& text) {
    const PostHandOver result = handOverPost(composer.serviceType(), text, _opener);
    if (result) return {true, {}};
    const std::string advice = result.address.empty() ? std::string() : "It can be posted at " + result.address;
    return {false, joined("The post could not be handed over: " + result.error, advice)};
}

}  // namespace hosts::desktop
