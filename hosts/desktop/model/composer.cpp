// SPDX-License-Identifier: MIT
#include "hosts/desktop/model/composer.h"

#include <QLocale>
#include <QStringList>
#include <string_view>
#include <utility>

namespace hosts::desktop {
namespace {

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
    if (_mail && !_isDone) take(sendMail(*_mail, _handOver));
}

void Composer::saveDraft() {
    if (_mail && !_isDone) take(saveMail(*_mail, _handOver));
}

void Composer::post(const QString& text) {
    if (_post && !_isDone) take(hosts::post(*_post, text.toStdString(), _handOver));
}

void Composer::cancel() {
    if (std::exchange(_isDone, true)) return;
    if (_mail) _mail->finish(platform::MFMailComposeResult::cancelled);
    if (_post) _post->finish(platform::SLComposeViewControllerResult::cancelled);
}

// What has opened is before the user's eyes.
void Composer::take(const ComposerOutcome& outcome) {
    _isDone = outcome.isFinished;
    if (outcome.weight != ComposerOutcome::Weight::plain) emit told(QString::fromStdString(outcome.text));
}

}  // namespace hosts::desktop
