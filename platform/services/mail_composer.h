// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/foundation/export.h"
#include "platform/ui/view_controller.h"

namespace platform {

class MFMailComposeViewController;
struct Platform;

enum class MFMailComposeResult { cancelled = 0, saved = 1, sent = 2, failed = 3 };

class TRIVEL3_PLATFORM_EXPORT MFMailComposeViewControllerDelegate {
public:
    virtual ~MFMailComposeViewControllerDelegate() = default;
    /// The user is done with the composer; the delegate dismisses it. `error` is empty unless the
    /// result is `failed`.
    virtual void mailComposeController_didFinishWithResult_error(MFMailComposeViewController& controller,
                                                                 MFMailComposeResult result,
                                                                 const std::string& error) = 0;
};

/// An e-mail for the user to look over. A host shows its content and, in the end, finishes it.
class TRIVEL3_PLATFORM_EXPORT MFMailComposeViewController : public UIViewController {
public:
    struct Attachment {
        /// Nothing when the caller had no data to attach.
        std::optional<std::string> data;
        std::string mimeType;
        std::string fileName;
    };

    /// The platform outlives the composer.
    explicit MFMailComposeViewController(Platform& platform);
    const char* className() const override { return "MFMailComposeViewController"; }

    /// Not owned; null for none. One that is gone is not told.
    void setMailComposeDelegate(std::weak_ptr<MFMailComposeViewControllerDelegate> delegate) {
        _delegate = std::move(delegate);
    }
    void setSubject(std::string subject) { _subject = std::move(subject); }
    void setToRecipients(std::vector<std::string> recipients) { _toRecipients = std::move(recipients); }
    void addAttachmentData_mimeType_fileName(std::optional<std::string> data, std::string mimeType,
                                             std::string fileName) {
        _attachments.push_back({std::move(data), std::move(mimeType), std::move(fileName)});
    }

    const std::string& subject() const { return _subject; }
    const std::vector<std::string>& toRecipients() const { return _toRecipients; }
    const std::vector<Attachment>& attachments() const { return _attachments; }

    /// Another composer with the same content, for the same delegate.
    std::shared_ptr<MFMailComposeViewController> copy() const;

    /// What a host calls when the user has sent, saved or cancelled, or sending has failed.
    void finish(MFMailComposeResult result, const std::string& error = {});

private:
    Platform& _platform;
    std::weak_ptr<MFMailComposeViewControllerDelegate> _delegate;
    std::string _subject;
    std::vector<std::string> _toRecipients;
    std::vector<Attachment> _attachments;
};

/// Makes mail composers.
class TRIVEL3_PLATFORM_EXPORT MailService {
public:
    virtual ~MailService() = default;
    /// Null when the device cannot compose e-mail.
    virtual std::shared_ptr<MFMailComposeViewController> makeMailComposeViewController(Platform& platform) = 0;
};

}  // namespace platform
