// SPDX-License-Identifier: MIT
// Drafts as another program reads them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <ctime>

#include "test_desktop.h"
#include "tests/kit/child_process.h"

namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Pair;
using testing::StartsWith;

using Values = std::map<std::string, std::string>;

class MailDraft : public testing::Test {
protected:
    Values save(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "draft");
        return desktop.probeNamed(std::move(arguments));
    }

    /// What Python's parser reads in the draft; attachments are saved by number.
    Values read(const std::string& draft) const {
        Values values;
        kit::ChildProcess reader{{TEST_PYTHON, "-I", TEST_MESSAGE_READER, draft, parts.path()}};
        while (const auto line = reader.readLine()) {
            const auto colon = line->find(": ");
            values[line->substr(0, colon)] = colon == std::string::npos ? "" : line->substr(colon + 2);
        }
        EXPECT_EQ(reader.wait(), 0);
        return values;
    }

    Values readSaved(const std::vector<std::string>& arguments) const {
        const Values outcome = save(arguments);
        EXPECT_EQ(outcome.at("no draft"), "");
        return read(outcome.at("draft"));
    }

    std::string attachment(const std::string& bytes) {
        const std::string file = parts / "source";
        kit::writeText(file, bytes);
        return file;
    }

    static std::string everyByte() {
        std::string bytes;
        for (int byte = 0; byte < 256; ++byte)
            bytes += static_cast<char>(byte);
        return "bplist00\r\n.\r\nFrom \n" + bytes + bytes;
    }

    kit::TestDesktop desktop;
    kit::TemporaryFolder parts;
};

const std::string subject = "subject=Trivel Support";
const std::string recipient = "to=support@fenwary.example";

TEST_F(MailDraft, isAWholeMessage) {
    const auto before = std::time(nullptr);
    const Values message =
        readSaved({subject, recipient, "attach=" + attachment(everyByte()) + "|Trivel.plist|application/x-plist"});
    EXPECT_EQ(message.at("Subject"), "Trivel Support");
    EXPECT_EQ(message.at("recipients"), "support@fenwary.example");
    EXPECT_EQ(message.at("X-Unsent"), "1");
    EXPECT_EQ(message.at("MIME-Version"), "1.0");
    EXPECT_THAT(message.at("Message-ID"), MatchesRegex("<[^<>@ ]+@[^<>@ ]+>"));
    EXPECT_GE(std::stol(message.at("date")), before);
    EXPECT_LE(std::stol(message.at("date")), std::time(nullptr));
    EXPECT_EQ(message.at("type"), "multipart/mixed");
    EXPECT_EQ(message.at("text"), "''");
    EXPECT_EQ(message.at("defects"), "");
}

TEST_F(MailDraft, namesEachHeaderOnce) {
    const Values message = readSaved({subject, recipient});
    for (const char* name : {"Subject", "To", "From", "Date", "Message-Id", "X-Unsent", "Content-Type"}) {
        const std::string all = "|" + message.at("headers") + "|";
        const std::string one = std::string{"|"} + name + "|";
        const auto place = all.find(one);
        ASSERT_NE(place, std::string::npos) << name << " in " << all;
        EXPECT_EQ(all.find(one, place + 1), std::string::npos) << name;
    }
    EXPECT_THAT(message.at("headers"), testing::Not(HasSubstr("Cc")));
}

TEST_F(MailDraft, carriesAttachmentsByteForByte) {
    const Values message =
        readSaved({subject, recipient, "attach=" + attachment(everyByte()) + "|Trivel.plist|application/x-plist"});
    EXPECT_EQ(message.at("attachments"), "1");
    EXPECT_EQ(message.at("attachment 0"), "Trivel.plist|application/x-plist|attachment");
    EXPECT_EQ(kit::readText(parts / "0"), everyByte());
}

TEST_F(MailDraft, carriesLargeAndEmptyAttachments) {
    std::string large;
    for (std::uint32_t number = 1; large.size() < 5'000'000; number = number * 1664525 + 1013904223)
        large += static_cast<char>(number >> 24);
    kit::writeText(parts / "large", large);
    kit::writeText(parts / "empty", "");
    const Values message = readSaved({subject, recipient, "attach=" + (parts / "large") + "|Large.bin|application/x",
                                      "attach=" + (parts / "empty") + "|Empty.txt|text/plain"});
    EXPECT_EQ(message.at("attachment 0"), "Large.bin|application/x|attachment");
    EXPECT_EQ(message.at("attachment 1"), "Empty.txt|text/plain|attachment");
    EXPECT_TRUE(kit::readText(parts / "0") == large);
    EXPECT_EQ(kit::readText(parts / "1"), "");
}

TEST_F(MailDraft, changesNoLineEndsInAttachmentsOfText) {
    const std::string text = "one\r\ntwo\nthree\rfour \n\n";
    const Values message = readSaved({subject, recipient, "attach=" + attachment(text) + "|Notes.txt|text/plain"});
    EXPECT_EQ(kit::readText(parts / "0"), text);
}

TEST_F(MailDraft, leavesOutAttachmentsWithoutData) {
    const Values message = readSaved({subject, recipient, "attach=|Trivel.plist|application/x-plist"});
    EXPECT_EQ(message.at("attachments"), "0");
    EXPECT_EQ(message.at("text"), "''");
}

TEST_F(MailDraft, givesAnAttachmentOfNoKnownTypeAGeneralOne) {
    const Values message = readSaved({subject, recipient, "attach=" + attachment("x") + "|Thing|no type at all"});
    EXPECT_THAT(message.at("attachment 0"), StartsWith("Thing|"));
    EXPECT_EQ(message.at("defects"), "");
    EXPECT_EQ(kit::readText(parts / "0"), "x");
}

TEST_F(MailDraft, keepsToTheFormOfMessages) {
    const Values message = readSaved({"subject=" + std::string(3000, 'x'), recipient,
                                      "attach=" + attachment(everyByte()) + "|Trivel.plist|application/x-plist"});
    EXPECT_EQ(message.at("bare line ends"), "0");
    EXPECT_EQ(message.at("beyond ascii"), "0");
    EXPECT_LE(std::stoi(message.at("longest line")), 998);
}

TEST_F(MailDraft, bearsTextsBeyondAscii) {
    const Values message =
        readSaved({"subject=Gr\xC3\xBC\xC3\x9F"
                   "e \xF0\x9F\x9A\x8A",
                   "to=J\xC3\xBCrgen <a@b.example>",
                   "attach=" + attachment("x") +
                       "|Gr\xC3\xBC\xC3\x9F"
                       "e.plist|application/x-plist"});
    EXPECT_EQ(message.at("Subject"),
              "Gr\xC3\xBC\xC3\x9F"
              "e \xF0\x9F\x9A\x8A");
    EXPECT_EQ(message.at("To"), "J\xC3\xBCrgen <a@b.example>");
    EXPECT_EQ(message.at("attachment 0"),
              "Gr\xC3\xBC\xC3\x9F"
              "e.plist|application/x-plist|attachment");
    EXPECT_EQ(message.at("defects"), "");
    EXPECT_EQ(message.at("beyond ascii"), "0");
}

TEST_F(MailDraft, letsNoTextBecomeAHeader) {
    const Values message = readSaved({"subject=One\r\nBcc: thief@example.org\nX: y", recipient,
                                      "attach=" + attachment("x") + "|a\nX-Evil: 1|application/x-plist\nX-Evil: 1"});
    EXPECT_EQ(message.at("Subject"), "One  Bcc: thief@example.org X: y");
    EXPECT_THAT(message.at("headers"), testing::Not(AllOf(HasSubstr("Bcc"), HasSubstr("X-Evil"))));
}

TEST_F(MailDraft, isForAllRecipients) {
    const Values message = readSaved({subject, "to=a@b.example", "to=Somebody <c@d.example>"});
    EXPECT_EQ(message.at("recipients"), "a@b.example|c@d.example");
}

TEST_F(MailDraft, isFromTheUserOfTheMachine) {
    EXPECT_THAT(readSaved({subject, recipient}).at("sender"), MatchesRegex("[A-Za-z0-9._-]+@[A-Za-z0-9._-]+"));
    desktop.setEnvironment("EMAIL", "J\xC3\xBCrgen <juergen@example.org>");
    EXPECT_EQ(readSaved({subject, recipient}).at("From"), "J\xC3\xBCrgen <juergen@example.org>");
    desktop.setEnvironment("EMAIL", "no address at all <");
    EXPECT_THAT(readSaved({subject, recipient}).at("sender"), MatchesRegex("[A-Za-z0-9._-]+@[A-Za-z0-9._-]+"));
}

TEST_F(MailDraft, hasAnIdentifierOfItsOwn) {
    EXPECT_NE(readSaved({subject, recipient}).at("Message-ID"), readSaved({subject, recipient}).at("Message-ID"));
}

TEST_F(MailDraft, isNotMadeForARecipientThatIsNoAddress) {
    for (const std::string nobody : {"", "  ", ","}) {
        const Values outcome = save({subject, "to=" + nobody});
        EXPECT_EQ(outcome.at("draft"), "");
        EXPECT_THAT(outcome.at("no draft"), HasSubstr("not an e-mail address: ")) << nobody;
    }
    EXPECT_THAT(desktop.filesAtHome(), IsEmpty());
}

TEST_F(MailDraft, liesAmongTheUsersDocuments) {
    std::filesystem::create_directory(desktop.home() + "/Documents");
    EXPECT_EQ(save({subject, recipient}).at("draft"), desktop.home() + "/Documents/Trivel Support.eml");
}

TEST_F(MailDraft, liesInTheFolderThatTheUserNames) {
    std::filesystem::create_directory(desktop.home() + "/Documents");
    EXPECT_EQ(save({subject, recipient, "folder=" + desktop.elsewhere("papers/mine")}).at("draft"),
              desktop.elsewhere("papers/mine/Trivel Support.eml"));
    EXPECT_THAT(desktop.filesAtHome(), IsEmpty());
}

TEST_F(MailDraft, hasAPlaceWhereTheUserHasADocumentsFolder) {
    const std::string folder = desktop.home() + "/Documents";
    std::filesystem::create_directory(folder);
    EXPECT_THAT(desktop.probe({"draft-folder"}), ElementsAre(folder, "there", folder, "there"));
}

TEST_F(MailDraft, hasNoPlaceInAFolderThatIsNotThere) {
    const std::string usual = desktop.home() + "/Documents";
    EXPECT_THAT(desktop.probe({"draft-folder"}), ElementsAre(usual, "ask", usual, "ask"));
    kit::writeText(usual, "no folder");
    EXPECT_THAT(desktop.probe({"draft-folder"}), ElementsAre(usual, "ask", usual, "ask"));
    const std::string named = desktop.elsewhere("papers");
    desktop.setEnvironment("XDG_DOCUMENTS_DIR", named);
    EXPECT_THAT(desktop.probe({"draft-folder"}), ElementsAre(named, "ask", named, "ask"));
}

TEST_F(MailDraft, hasNoPlaceInTheHomeFolder) {
    const std::string usual = desktop.home() + "/Documents";
    kit::writeText(desktop.home() + "/.config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/\"\n");
    EXPECT_THAT(desktop.probe({"draft-folder"}), ElementsAre(usual, "ask", usual, "ask"));
    desktop.setEnvironment("XDG_DOCUMENTS_DIR", desktop.home() + "/");
    EXPECT_THAT(desktop.probe({"draft-folder"}), ElementsAre(usual, "ask", usual, "ask"));
}

TEST_F(MailDraft, hasNoPlaceAnyMoreWhereOneCouldNotBeSaved) {
    desktop.setEnvironment("XDG_DOCUMENTS_DIR", "/sys");
    EXPECT_THAT(desktop.probe({"draft-folder", subject, recipient}), ElementsAre("/sys", "there", "/sys", "ask"));
}

TEST_F(MailDraft, liesInTheFolderThatTheUserHasConfigured) {
    kit::writeText(desktop.home() + "/.config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n");
    EXPECT_EQ(save({subject, recipient}).at("draft"), desktop.home() + "/Dokumente/Trivel Support.eml");
}

TEST_F(MailDraft, liesInTheFolderThatTheEnvironmentNames) {
    kit::writeText(desktop.home() + "/.config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n");
    desktop.setEnvironment("XDG_DOCUMENTS_DIR", desktop.elsewhere("papers/mine"));
    EXPECT_EQ(save({subject, recipient}).at("draft"), desktop.elsewhere("papers/mine/Trivel Support.eml"));
    desktop.setEnvironment("XDG_DOCUMENTS_DIR", "not/absolute");
    EXPECT_EQ(save({subject, recipient}).at("draft"), desktop.home() + "/Dokumente/Trivel Support.eml");
}

TEST_F(MailDraft, overwritesNoOtherFile) {
    kit::writeText(desktop.home() + "/Documents/Trivel Support.eml", "mine");
    EXPECT_EQ(save({subject, recipient}).at("draft"), desktop.home() + "/Documents/Trivel Support (2).eml");
    EXPECT_EQ(save({subject, recipient}).at("draft"), desktop.home() + "/Documents/Trivel Support (3).eml");
    EXPECT_EQ(kit::readText(desktop.home() + "/Documents/Trivel Support.eml"), "mine");
}

TEST_F(MailDraft, isNamedWithoutLeavingItsFolder) {
    EXPECT_EQ(save({"subject=../../x", recipient}).at("draft"), desktop.home() + "/Documents/-..-x.eml");
    EXPECT_EQ(save({"subject=", recipient}).at("draft"), desktop.home() + "/Documents/E-mail.eml");
}

TEST_F(MailDraft, isForItsUserAlone) {
    struct stat status {};
    ASSERT_EQ(::stat(save({subject, recipient}).at("draft").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600u);
}

TEST_F(MailDraft, saysThatTheDocumentsFolderCannotBeWritten) {
    kit::writeText(desktop.elsewhere("file"), "");
    desktop.setEnvironment("XDG_DOCUMENTS_DIR", desktop.elsewhere("file/papers"));
    const Values outcome = save({subject, recipient});
    EXPECT_EQ(outcome.at("draft"), "");
    EXPECT_THAT(outcome.at("no draft"), StartsWith("cannot make the folder " + desktop.elsewhere("file/papers")));
}

// Not even the machine's administrator makes files there, and it is there wherever our programs run.
TEST_F(MailDraft, saysThatTheDocumentsFolderIsReadOnly) {
    desktop.setEnvironment("XDG_DOCUMENTS_DIR", "/proc");
    const Values outcome = save({subject, recipient});
    EXPECT_EQ(outcome.at("draft"), "");
    EXPECT_THAT(outcome.at("no draft"), StartsWith("cannot make a file in /proc: "));
}

TEST_F(MailDraft, leavesNothingHalfWrittenOnAFullDisk) {
    const Values outcome =
        save({subject, recipient,
              "attach=" + attachment(std::string(100000, 'x')) + "|Trivel.plist|application/x-plist", "limit=20000"});
    EXPECT_EQ(outcome.at("draft"), "");
    EXPECT_EQ(outcome.at("no draft"),
              "cannot write the e-mail " + desktop.home() + "/Documents/Trivel Support.eml: File too large");
    EXPECT_THAT(desktop.filesAtHome(), IsEmpty());
}

TEST_F(MailDraft, isNotMadeWhenTheUserCancels) {
    EXPECT_THAT(desktop.probe({"cancel", subject, recipient, "attach=" + attachment("x") + "|Trivel.plist|a/b"}),
                IsEmpty());
    EXPECT_THAT(desktop.filesAtHome(), IsEmpty());
}

}  // namespace
