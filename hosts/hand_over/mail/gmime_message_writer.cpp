// SPDX-License-Identifier: MIT
#include <cerrno>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/hand_over/mail/gmime_objects.h"
#include "hosts/hand_over/message_writer.h"
#include "hosts/system/error_text.h"

namespace hosts {

namespace {

using platform::Done;
using platform::Problem;
using platform::Result;

constexpr const char* charset = "utf-8";

struct FreeFormatOptions {
    void operator()(GMimeFormatOptions* options) const { g_mime_format_options_free(options); }
};
using FormatOptions = std::unique_ptr<GMimeFormatOptions, FreeFormatOptions>;

struct Mailbox {
    std::string name;  // may be empty
    std::string address;
};

std::string textOrNothing(const char* text) {
    return text == nullptr ? "" : text;
}

std::optional<Mailbox> mailboxFromEnvironment() {
    const char* const email = g_getenv("EMAIL");
    const UniqueObject<InternetAddressList> list{email == nullptr ? nullptr
                                                                  : internet_address_list_parse(nullptr, email)};
    if (!list || internet_address_list_length(list.get()) != 1) return std::nullopt;
    InternetAddress* const address = internet_address_list_get_address(list.get(), 0);
    if (!INTERNET_ADDRESS_IS_MAILBOX(address)) return std::nullopt;
    return Mailbox{textOrNothing(internet_address_get_name(address)),
                   textOrNothing(internet_address_mailbox_get_addr(INTERNET_ADDRESS_MAILBOX(address)))};
}

// What stands in an address as it is, on either side of the "@".
std::string atomOr(const char* text, const char* otherwise) {
    constexpr std::string_view allowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-_";
    const std::string_view atom{text};
    const bool isAtom = !atom.empty() && atom.find_first_not_of(allowed) == std::string_view::npos &&
                        atom.front() != '.' && atom.back() != '.' && atom.find("..") == std::string_view::npos;
    return isAtom ? text : otherwise;
}

// Who writes mail on this machine: who the environment variable EMAIL names, else the user under the
// machine's name. Mail programs put the user's own choice in its place.
Mailbox mailboxOfUser() {
    if (auto mailbox = mailboxFromEnvironment()) return *mailbox;
    const std::string name = g_get_real_name();
    return {name == "Unknown" ? "" : name,
            atomOr(g_get_user_name(), "user") + "@" + atomOr(g_get_host_name(), "localhost")};
}

// A header is one line, whatever the text.
std::string onOneLine(std::string_view text) {
    std::string line{text};
    for (char& letter : line) {
        if (static_cast<unsigned char>(letter) < ' ') letter = ' ';
    }
    return line;
}

// The message as the library builds it, and what that refers to.
class Draft {
public:
    Draft();

    Result<Done> addRecipient(const std::string& recipient);
    void setSubject(std::string_view subject);
    Result<Done> attach(const MailAttachment& attachment);
    Result<Done> writeTo(int file) const;

private:
    void setSender();
    void addEmptyText();

    std::vector<std::unique_ptr<LentBytes>> _lent;
    UniqueObject<GMimeMessage> _message{g_mime_message_new(TRUE)};
    UniqueObject<GMimeMultipart> _parts{g_mime_multipart_new_with_subtype("mixed")};
};

Draft::Draft() {
    setSender();
    g_mime_object_set_header(GMIME_OBJECT(_message.get()), "X-Unsent", "1", charset);
    addEmptyText();
    g_mime_message_set_mime_part(_message.get(), GMIME_OBJECT(_parts.get()));
}

void Draft::setSender() {
    const Mailbox user = mailboxOfUser();
    const std::string domain = user.address.substr(user.address.rfind('@') + 1);
    g_mime_message_add_mailbox(_message.get(), GMIME_ADDRESS_TYPE_FROM, user.name.empty() ? nullptr : user.name.c_str(),
                               user.address.c_str());
    GDateTime* const now = g_date_time_new_now_local();
    g_mime_message_set_date(_message.get(), now);
    g_date_time_unref(now);
    char* const identifier = g_mime_utils_generate_message_id(domain.c_str());
    g_mime_message_set_message_id(_message.get(), identifier);
    g_free(identifier);
}

// Where the user's own words go: mail programs open it for writing.
void Draft::addEmptyText() {
    const UniqueObject<GMimeTextPart> text{g_mime_text_part_new_with_subtype("plain")};
    g_mime_text_part_set_charset(text.get(), charset);
    g_mime_text_part_set_text(text.get(), "");
    g_mime_multipart_add(_parts.get(), GMIME_OBJECT(text.get()));
}

void Draft::setSubject(std::string_view subject) {
    g_mime_message_set_subject(_message.get(), onOneLine(subject).c_str(), charset);
}

Result<Done> Draft::addRecipient(const std::string& recipient) {
    const UniqueObject<InternetAddressList> parsed{internet_address_list_parse(nullptr, onOneLine(recipient).c_str())};
    if (!parsed || internet_address_list_length(parsed.get()) == 0) {
        return Problem{.reason = "not an e-mail address: " + onOneLine(recipient)};
    }
    internet_address_list_append(g_mime_message_get_addresses(_message.get(), GMIME_ADDRESS_TYPE_TO), parsed.get());
    return platform::Done();
}

Result<Done> Draft::attach(const MailAttachment& attachment) {
    if (attachment.data.size() > UINT32_MAX) {
        return Problem{.reason = "too large for an attachment: " + onOneLine(attachment.fileName)};
    }
    _lent.push_back(std::make_unique<LentBytes>(attachment.data));
    const auto stream = _lent.back()->stream();
    const UniqueObject<GMimeDataWrapper> content{
        g_mime_data_wrapper_new_with_stream(stream.get(), GMIME_CONTENT_ENCODING_DEFAULT)};
    const UniqueObject<GMimePart> part{g_mime_part_new()};
    const UniqueObject<GMimeContentType> type{
        g_mime_content_type_parse(nullptr, onOneLine(attachment.mimeType).c_str())};
    g_mime_object_set_content_type(GMIME_OBJECT(part.get()), type.get());
    g_mime_object_set_disposition(GMIME_OBJECT(part.get()), GMIME_DISPOSITION_ATTACHMENT);
    g_mime_part_set_filename(part.get(), onOneLine(attachment.fileName).c_str());
    // Base64 whatever the type, so that every byte arrives as it is.
    g_mime_part_set_content_encoding(part.get(), GMIME_CONTENT_ENCODING_BASE64);
    g_mime_part_set_content(part.get(), content.get());
    g_mime_multipart_add(_parts.get(), GMIME_OBJECT(part.get()));
    return platform::Done();
}

Result<Done> Draft::writeTo(int file) const {
    const UniqueObject<GMimeStream> output{g_mime_stream_fs_new(file)};
    g_mime_stream_fs_set_owner(GMIME_STREAM_FS(output.get()), FALSE);
    const UniqueObject<GMimeStream> buffer{g_mime_stream_buffer_new(output.get(), GMIME_STREAM_BUFFER_BLOCK_WRITE)};
    const FormatOptions options{g_mime_format_options_new()};
    g_mime_format_options_set_newline_format(options.get(), GMIME_NEWLINE_FORMAT_DOS);
    errno = 0;
    const bool written =
        g_mime_object_write_to_stream(GMIME_OBJECT(_message.get()), options.get(), buffer.get()) >= 0 &&
        g_mime_stream_flush(buffer.get()) == 0;
    if (!written) return Problem{.reason = errno == 0 ? "it cannot be written" : errorText(errno)};
    return platform::Done();
}

Result<Done> writeMessage(const MailMessage& message, int file) {
    Draft draft;
    for (const std::string& recipient : message.recipients) {
        if (auto added = draft.addRecipient(recipient); !added) return added;
    }
    draft.setSubject(message.subject);
    for (const MailAttachment& attachment : message.attachments) {
        if (auto attached = draft.attach(attachment); !attached) return attached;
    }
    return draft.writeTo(file);
}

}  // namespace

}  // namespace hosts

extern "C" __attribute__((visibility("default"))) void trivel3WriteMailMessage(
    const hosts::MailMessage& message, int file, platform::Result<platform::Done>& outcome) {
    g_mime_init();
    outcome = hosts::writeMessage(message, file);
}
