// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QVariantList>
#include <memory>

#include "hosts/session/composer_outcome.h"

namespace hosts::desktop {

/// A composer that a page has presented, as it is drawn: an e-mail or a post. When the user is done
/// with it, the page is told, and dismisses it; what found no way out stays, for another try.
class Composer : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A page presents composers")
    /// "mail" or "post".
    Q_PROPERTY(QString kind READ kind CONSTANT)
    Q_PROPERTY(QString subject READ subject CONSTANT)
    Q_PROPERTY(QString recipients READ recipients CONSTANT)
    /// Each with "name", "size" in words, and "missing" when there is no data in it.
    Q_PROPERTY(QVariantList attachments READ attachments CONSTANT)
    Q_PROPERTY(QString service READ service CONSTANT)
    Q_PROPERTY(QString text READ text CONSTANT)

public:
    /// Null when the controller is no composer. `handOver` outlives the composer.
    static std::unique_ptr<Composer> of(std::shared_ptr<platform::UIViewController> controller, HandOver& handOver);

    QString kind() const;
    QString subject() const;
    QString recipients() const;
    QVariantList attachments() const;
    QString service() const;
    QString text() const;

    Q_INVOKABLE void send();
    Q_INVOKABLE void saveDraft();
    Q_INVOKABLE void post(const QString& text);
    Q_INVOKABLE void cancel();

signals:
    /// Something that the user should know.
    void told(const QString& message);

private:
    Composer(std::shared_ptr<platform::MFMailComposeViewController> mail,
             std::shared_ptr<platform::SLComposeViewController> post, HandOver& handOver);

    void take(const ComposerOutcome& outcome);

    // One of them is there.
    std::shared_ptr<platform::MFMailComposeViewController> _mail;
    std::shared_ptr<platform::SLComposeViewController> _post;
    HandOver& _handOver;
    bool _isDone = false;
};

}  // namespace hosts::desktop
