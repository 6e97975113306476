// SPDX-License-Identifier: MIT
#include "hosts/hand_over/attachment_files.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "hosts/hand_over/new_file.h"

namespace hosts {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::hours keptFor{7 * 24};

void removeOld(const fs::path& folder) {
    std::error_code ignored;
    const auto oldest = fs::file_time_type::clock::now() - keptFor;
    for (const auto& entry : fs::directory_iterator{folder, ignored}) {
        std::error_code unknown;
        const auto written = entry.last_write_time(unknown);
        if (!unknown && written < oldest) fs::remove_all(entry.path(), ignored);
    }
}

bool saveAttachment(const platform::MFMailComposeViewController::Attachment& attachment, const std::string& folder,
                    std::vector<std::string>& files, std::string& error) {
    auto file = NewFile::create(folder, fileNameFrom(attachment.fileName, "attachment"), "", error);
    if (!file || !file->write(*attachment.data, error) || !file->keep(error)) return false;
    files.push_back(file->path());
    return true;
}

// A folder of its own for each e-mail: the files in it keep their names.
std::string newFolderName() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::to_string(std::chrono::duration_cast<std::chrono::microseconds>(now).count());
}

}  // namespace

bool saveAttachments(const std::vector<platform::MFMailComposeViewController::Attachment>& attachments,
                     const std::string& cacheFolder, std::vector<std::string>& files, std::string& error) {
    const fs::path mail = fs::path{cacheFolder} / "trivel3/mail";
    removeOld(mail);
    const std::string folder = mail / newFolderName();
    for (const auto& attachment : attachments) {
        if (attachment.data && !saveAttachment(attachment, folder, files, error)) {
            std::error_code ignored;
            fs::remove_all(folder, ignored);
            return false;
        }
    }
    return true;
}

}  // namespace hosts
