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
                   std::shared_ptr<platform::SLComposeViewController> post, HandOver& handOver) {
    if (mail) _mail.emplace(std::move(mail), handOver);
    if (post) _post.emplace(std::move(post), handOver);
}

QString Composer::kind() const {
    return _mail ? QStringLiteral("mail") : QStringLiteral("post");
}

QString Composer::subject() const {
    return _mail ? QString::fromStdString(_mail->composer().subject()) : QString();
}

QString Composer::recipients() const {
    QStringList names;
    if (_mail) {
        for (const std::string& recipient : _mail->composer().toRecipients())
            names.append(QString::fromStdString(recipient));
    }
    return names.join(QStringLiteral(", "));
}

QVariantList Composer::attachments() const {
    QVariantList entries;
    if (_mail) {
        for (const auto& attachment : _mail->composer().attachments())
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

void Composer::setText(const QString& text) {
    if (!_post || text == this->text()) return;
    _post->setText(text.toStdString());
    emit textChanged();
}

QString Composer::roomText() const {
    return _post ? QString::fromStdString(_post->roomText()) : QString();
}

void Composer::handOver(ComposedMail::Way way) {
    if (!_mail || _isDone) return;
    const auto folder = _mail->folderToAskFor();
    if (!folder) return take(_mail->handOver(way));
    _way = way;
    _folder = QString::fromStdString(*folder);
    ask(WhichFolder);
}

void Composer::useFolder(const QString& typed) {
    const auto folder = ComposedMail::folderNamed(typed.toStdString());
    if (folder) {
        ask(NoQuestion);
        return take(_mail->handOver(_way, *folder));
    }
    _folderProblem = QString::fromStdString(folder.error().text());
    emit questionChanged();
}

void Composer::post() {
    if (_post && !_isDone) take(_post->post());
}

void Composer::cancel() {
    if (holdsTypedText()) return ask(WhetherToDrop);
    drop();
}

bool Composer::mayClose() {
    if (!holdsTypedText()) return true;
    _closesWindow = true;
    ask(WhetherToDrop);
    return false;
}

void Composer::agree(const QString& folder) {
    if (_question == WhichFolder) return useFolder(folder);
    if (_question != WhetherToDrop) return;
    const bool closesWindow = _closesWindow;
    ask(NoQuestion);
    drop();
    if (closesWindow) emit closeAgreed();
}

void Composer::ask(Question question) {
    _question = question;
    _folderProblem.clear();
    if (question == NoQuestion) _closesWindow = false;
    emit questionChanged();
}

void Composer::drop() {
    if (std::exchange(_isDone, true)) return;
    if (_mail) _mail->cancel();
    if (_post) _post->cancel();
}

void Composer::take(const ComposerOutcome& outcome) {
    _isDone = outcome.isFinished;
    emit ended(outcome);
}

}  // namespace hosts::desktop
