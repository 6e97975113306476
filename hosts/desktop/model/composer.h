// SPDX-License-Identifier: MIT
#pragma once

#include <QtQml/qqmlregistration.h>
#include <QObject>
#include <QVariantList>
#include <memory>
#include <optional>

#include "hosts/session/composed_mail.h"
#include "hosts/session/composed_post.h"

namespace hosts::desktop {

/// A composer that a page has presented, as it is drawn: an e-mail or a post. When the user is done with it, the page
/// is told, and dismisses it; a post that found no way out stays, for another try.
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
    /// A post's, as the user has it.
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    /// How many characters of a post are left, below 0 how many are too many; the same as a sentence.
    Q_PROPERTY(int room READ room NOTIFY textChanged)
    Q_PROPERTY(QString roomText READ roomText NOTIFY textChanged)
    Q_PROPERTY(bool canPost READ canPost NOTIFY textChanged)
    /// What the user is asked before the composer goes on. `agree` and `decline` answer.
    Q_PROPERTY(Question question READ question NOTIFY questionChanged)
    /// For the question of the folder: the path to suggest, and what is wrong with the one that was given last.
    Q_PROPERTY(QString folder READ folder NOTIFY questionChanged)
    Q_PROPERTY(QString folderProblem READ folderProblem NOTIFY questionChanged)

public:
    enum Question {
        NoQuestion,
        WhichFolder,   ///< where the draft is to go
        WhetherToDrop  ///< whether what was typed may go
    };
    Q_ENUM(Question)

    /// Null when the controller is no composer. `handOver` outlives the composer.
    static std::unique_ptr<Composer> of(std::shared_ptr<platform::UIViewController> controller, HandOver& handOver);

    QString kind() const;
    QString subject() const;
    QString recipients() const;
    QVariantList attachments() const;
    QString service() const;
    QString text() const;
    void setText(const QString& text);
    int room() const { return _post ? _post->room() : 0; }
    QString roomText() const;
    bool canPost() const { return _post && !_post->obstacle(); }
    Question question() const { return _question; }
    const QString& folder() const { return _folder; }
    const QString& folderProblem() const { return _folderProblem; }

    Q_INVOKABLE void send() { handOver(ComposedMail::Way::send); }
    Q_INVOKABLE void saveDraft() { handOver(ComposedMail::Way::saveDraft); }
    Q_INVOKABLE void post();
    /// Asks first where something typed would go with it.
    Q_INVOKABLE void cancel();

    /// With the folder, where that was the question.
    Q_INVOKABLE void agree(const QString& folder = {});
    Q_INVOKABLE void decline() { ask(NoQuestion); }

    /// Whether the window may close. If not, the user has been asked, and `closeAgreed` may follow.
    bool mayClose();

signals:
    void textChanged();
    void questionChanged();
    /// What became of it.
    void ended(const hosts::ComposerOutcome& outcome);
    /// The window may close now.
    void closeAgreed();

private:
    Composer(std::shared_ptr<platform::MFMailComposeViewController> mail,
             std::shared_ptr<platform::SLComposeViewController> post, HandOver& handOver);

    bool holdsTypedText() const { return _post && _post->isChanged() && !_isDone; }
    void ask(Question question);
    void handOver(ComposedMail::Way way);
    void useFolder(const QString& typed);
    void drop();
    void take(const ComposerOutcome& outcome);

    // One of them is there.
    std::optional<ComposedMail> _mail;
    std::optional<ComposedPost> _post;
    bool _isDone = false;
    Question _question = NoQuestion;
    /// What the answer is for.
    ComposedMail::Way _way = ComposedMail::Way::send;
    QString _folder;
    QString _folderProblem;
    bool _closesWindow = false;
};

}  // namespace hosts::desktop
