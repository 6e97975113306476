// SPDX-License-Identifier: MIT
#include <gmime/gmime.h>

#include <cerrno>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "hosts/hand_over/mail/sender.h"
#include "hosts/hand_over/mail/unique_object.h"
#include "hosts/hand_over/message_writer.h"
#include "hosts/system/error_text.h"

namespace hosts {

namespace {

constexpr const char* charset = "utf-8";

struct FreeFormatOptions {
    void operator()(GMimeFormatOptions* options) const { g_mime_format_options_free(options); }
};
using FormatOptions = std::unique_ptr<GMimeFormatOptions, FreeFormatOptions>;

// A header is one line, whatever the text.
std::string onOneLine(std::string_view text) {
    std::string line{text};
    for (char& letter : line) {
        if (static_cast<unsigned char>(letter) < ' ') letter = ' ';
    }
    return line;
}

// An attachment's bytes, lent to the library for as long as this lives: they may be hundreds of
// megabytes, and the library's own way is to copy them.
class LentBytes {
public:
    explicit LentBytes(std::string_view bytes)
        : _array(g_byte_array_new_take(reinterpret_cast<guint8*>(const_cast<char*>(bytes.data())), bytes.size())) {}
    LentBytes(const LentBytes&) = delete;
    LentBytes& operator=(const LentBytes&) = delete;
    ~LentBytes() { g_byte_array_free(_array, FALSE); }

    UniqueObject<GMimeStream> stream() const {
        UniqueObject<GMimeStream> stream{g_mime_stream_mem_new_with_byte_array(_array)};
        g_mime_stream_mem_set_owner(GMIME_STREAM_MEM(stream.get()), FALSE);
        return stream;
    }

private:
    GByteArray* _array;
};

// The message as the library builds it, and what that refers to.
class Draft {
public:
    Draft();

    bool addRecipient(const std::string& recipient, std::string& error);
    void setSubject(std::string_view subject);
    bool attach(const MailAttachment& attachment, std::string& error);
    bool writeTo(int file, std::string& error) const;

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
    const Sender sender = mailSender();
    const std::string domain = sender.address.substr(sender.address.rfind('@') + 1);
    g_mime_message_add_mailbox(_message.get(), GMIME_ADDRESS_TYPE_FROM,
                               sender.name.empty() ? nullptr : sender.name.c_str(), sender.address.c_str());
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

bool Draft::addRecipient(const std::string& recipient, std::string& error) {
    const UniqueObject<InternetAddressList> parsed{internet_address_list_parse(nullptr, onOneLine(recipient).c_str())};
    if (!parsed || internet_address_list_length(parsed.get()) == 0) {
        error = "not an e-mail address: " + onOneLine(recipient);
        return false;
    }
    internet_address_list_append(g_mime_message_get_addresses(_message.get(), GMIME_ADDRESS_TYPE_TO), parsed.get());
    return true;
}

bool Draft::attach(const MailAttachment& attachment, std::string& error) {
    if (attachment.data.size() > UINT32_MAX) {
        error = "too large for an attachment: " + onOneLine(attachment.fileName);
        return false;
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
    return true;
}

bool Draft::writeTo(int file, std::string& error) const {
    const UniqueObject<GMimeStream> output{g_mime_stream_fs_new(file)};
    g_mime_stream_fs_set_owner(GMIME_STREAM_FS(output.get()), FALSE);
    const UniqueObject<GMimeStream> buffer{g_mime_stream_buffer_new(output.get(), GMIME_STREAM_BUFFER_BLOCK_WRITE)};
    const FormatOptions options{g_mime_format_options_new()};
    g_mime_format_options_set_newline_format(options.get(), GMIME_NEWLINE_FORMAT_DOS);
    errno = 0;
    const bool written =
        g_mime_object_write_to_stream(GMIME_OBJECT(_message.get()), options.get(), buffer.get()) >= 0 &&
        g_mime_stream_flush(buffer.get()) == 0;
    if (!written) error = errno == 0 ? "it cannot be written" : errorText(errno);
    return written;
}

bool writeMessage(const MailMessage& message, int file, std::string& error) {
    Draft draft;
    for (const std::string& recipient : message.recipients) {
        if (!draft.addRecipient(recipient, error)) return false;
    }
    draft.setSubject(message.subject);
    for (const MailAttachment& attachment : message.attachments) {
        if (!draft.attach(attachment, error)) return false;
    }
    return draft.writeTo(file, error);
}

}  // namespace

}  // namespace hosts

extern "C" __attribute__((visibility("default"))) bool trivel3WriteMailMessage(const hosts::MailMessage& message,
                                                                               int file, std::string& error) {
    g_mime_init();
    return hosts::writeMessage(message, file, error);
}
