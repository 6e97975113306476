// SPDX-License-Identifier: MIT
#include "hosts/desktop/model/composer.h"

#include <QLocale>
#include <QStringList>
#include <string_view>

namespace hosts::desktop {
namespace {

using MailResult = platform::MFMailComposeResult;
using PostResult = platform::SLComposeViewControllerResult;

constexpr std::string_view serviceTypePrefix = "SLServiceType";

QVariantMap attachmentEntry(const platform::MFMailComposeViewController::Attachment& attachment) {
    const auto bytes = static_cast<qint64>(attachment.data ? attachment.data->size() : 0);
    return {{QStringLiteral("name"), QString::fromStdString(attachment.fileName)},
            {QStringLiteral("size"), QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat)},
            {QStringLiteral("missing"), !attachment.data}};
}

}  // namespace

std::unique_ptr<Composer> Composer::of(std::shared_ptr<platform::UIViewController> controller, HandOver& handOver) {
    auto mail = std::dynamic_pointer_cast<platform::MFMailComposeViewController>(controller);
    auto post = std::dynamic_pointer_cast<platform::SLComposeViewController>(controller);
    if (!mail && !post) return nullptr;
    return std::unique_ptr<Composer>(new Composer(std::move(mail), std::move(post), handOver));
}

Composer::Composer(std::shared_ptr<platform::MFMailComposeViewController> mail,
                   std::shared_ptr<platform::SLComposeViewController> post, HandOver& handOver)
    : _mail(std::move(mail)), _post(std::move(post)), _handOver(handOver) {}

QString Composer::kind() const {
    return _mail ? QStringLiteral("mail") : QStringLiteral("post");
}

QString Composer::subject() const {
    return _mail ? QString::fromStdString(_mail->subject()) : QString();
}

QString Composer::recipients() const {
    QStringList names;
    if (_mail) {
        for (const std::string& recipient : _mail->toRecipients())
            names.append(QString::fromStdString(recipient));
    }
    return names.join(QStringLiteral(", "));
}

QVariantList Composer::attachments() const {
    QVariantList entries;
    if (_mail) {
        for (const auto& attachment : _mail->attachments())
            entries.append(attachmentEntry(attachment));
    }
    return entries;
}

QString Composer::service() const {
    if (!_post) return {};
    std::string_view type = _post->serviceType();
    if (type.starts_with(serviceTypePrefix)) type.remove_prefix(serviceTypePrefix.size());
    return QString::fromUtf8(type.data(), static_cast<qsizetype>(type.size()));
}

QString Composer::text() const {
    return _post ? QString::fromStdString(_post->text()) : QString();
}

void Composer::send() {
    if (!_mail || _isDone) return;
    finishMail(_handOver.sendMail(*_mail), MailResult::sent);
}

void Composer::saveDraft() {
    if (!_mail || _isDone) return;
    finishMail(_handOver.saveMail(*_mail), MailResult::saved);
}

void Composer::finishMail(const HandOver::Outcome& outcome, MailResult result) {
    _isDone = true;
    tell(outcome.message);
    _mail->finish(outcome.worked ? result : MailResult::failed, outcome.worked ? std::string() : outcome.message);
}

void Composer::post(const QString& text) {
    if (!_post || _isDone) return;
    _isDone = true;
    const HandOver::Outcome outcome = _handOver.post(*_post, text.toStdString());
    tell(outcome.message);
    _post->finish(outcome.worked ? PostResult::done : PostResult::cancelled);
}

void Composer::cancel() {
    if (_isDone) return;
    _isDone = true;
    if (_mail) _mail->finish(MailResult::cancelled);
    if (_post) _post->finish(PostResult::cancelled);
}

void Composer::tell(const std::string& message) {
    if (!message.empty()) emit told(QString::fromStdString(message));
}

}  // namespace hosts::desktop
