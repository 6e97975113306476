// SPDX-License-Identifier: MIT
// desktop_probe MODULES COMMAND ARGUMENT…: does one thing with the services and prints what came of it.
#include <sys/resource.h>

#include <csignal>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/hand_over/hand_over.h"
#include "tests/kit/test_platform.h"

namespace {

using Arguments = std::vector<std::string>;
using platform::MFMailComposeViewController;

struct Services {
    explicit Services(const std::string& modules)
        : desktop(modules + "/libtrivel3gio.so"), handOver(modules + "/libtrivel3mail.so", desktop, programs, opener) {}

    hosts::Desktop desktop;
    hosts::XdgPrograms programs;
    hosts::UrlOpener opener{desktop, programs};
    hosts::DesktopHandOver handOver;
    kit::TestPlatform platform;
};

std::string contentOf(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Files grow up to this many bytes, as on a disk that fills up.
void limitFiles(const std::string& bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{std::stoul(bytes), std::stoul(bytes)};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

/// "FILE|NAME|TYPE"; without a file, there is no data to attach.
void attach(MFMailComposeViewController& composer, const std::string& description) {
    const auto first = description.find('|');
    const auto second = description.find('|', first + 1);
    const std::string file = description.substr(0, first);
    composer.addAttachmentData_mimeType_fileName(file.empty() ? std::nullopt : std::optional(contentOf(file)),
                                                 description.substr(second + 1),
                                                 description.substr(first + 1, second - first - 1));
}

/// "folder=…", or where drafts go by themselves.
std::string folderFor(Services& services, const Arguments& arguments) {
    constexpr std::string_view folder = "folder=";
    for (const std::string& argument : arguments) {
        if (argument.starts_with(folder)) return argument.substr(folder.size());
    }
    const auto usual = services.handOver.draftFolder();
    return usual ? usual->path : "";
}

/// "subject=…", "to=…", "attach=…" and "limit=…".
std::shared_ptr<MFMailComposeViewController> compose(Services& services, const Arguments& arguments) {
    auto composer = std::make_shared<MFMailComposeViewController>(services.platform.services());
    std::vector<std::string> recipients;
    for (const std::string& argument : arguments) {
        const auto equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        const std::string value = argument.substr(equals + 1);
        if (name == "subject") composer->setSubject(value);
        if (name == "to") recipients.push_back(value);
        if (name == "attach") attach(*composer, value);
        if (name == "limit") limitFiles(value);
    }
    composer->setToRecipients(recipients);
    return composer;
}

/// "NAME: ", and "no NAME: " with the reason where there is none.
void tell(const std::string& name, const platform::Result<std::string>& result) {
    std::cout << name << ": " << (result ? *result : "") << "\n";
    std::cout << "no " << name << ": " << (result ? "" : result.error().text()) << "\n";
}

void canOpen(Services& services, const Arguments& arguments) {
    std::cout << (services.opener.canOpenURL(arguments.at(0)) ? "yes" : "no") << "\n";
}

void open(Services& services, const Arguments& arguments) {
    const auto opened = services.opener.open(arguments.at(0));
    std::cout << (opened ? "opened" : "refused") << "\n" << (opened ? "" : opened.error().text()) << "\n";
}

void handler(Services& services, const Arguments& arguments) {
    std::cout << services.desktop.handlerOfType(arguments.at(0)).value_or("(none)") << "\n";
}

void post(Services& services, const Arguments& arguments) {
    const auto posted = services.handOver.post(arguments.at(0), arguments.at(1));
    const platform::Problem problem = posted ? platform::Problem{} : posted.error();
    std::cout << (posted ? "posted" : "refused") << "\n" << problem.path << "\n" << problem.reason << "\n";
}

/// Where drafts go, and whether the user is to be asked, before and after one has been tried there.
void draftFolder(Services& services, const Arguments& arguments) {
    for (int time = 0; time < 2; ++time) {
        const auto folder = services.handOver.draftFolder();
        std::cout << (folder ? folder->path : folder.error().text()) << "\n";
        std::cout << (folder && folder->isThere ? "there" : "ask") << "\n";
        if (!arguments.empty() && folder)
            (void)services.handOver.saveDraft(*compose(services, arguments), folder->path);
    }
}

void draft(Services& services, const Arguments& arguments) {
    tell("draft", services.handOver.saveDraft(*compose(services, arguments), folderFor(services, arguments)));
}

void send(Services& services, const Arguments& arguments) {
    const auto handed = services.handOver.sendMail(*compose(services, arguments), folderFor(services, arguments));
    tell("program", handed.program);
    tell("draft", handed.draft);
}

/// What a program does when the user changes their mind: nothing but end the composer.
void cancel(Services& services, const Arguments& arguments) {
    compose(services, arguments)->finish(platform::MFMailComposeResult::cancelled);
}

const std::map<std::string_view, void (*)(Services&, const Arguments&)> commands{
    {"can-open", canOpen}, {"open", open}, {"handler", handler}, {"post", post},
    {"draft", draft},      {"send", send}, {"cancel", cancel},   {"draft-folder", draftFolder},
};

}  // namespace

int main(int count, char** values) {
    const Arguments arguments(values + 1, values + count);
    Services services(arguments.at(0));
    commands.at(arguments.at(1))(services, Arguments(arguments.begin() + 2, arguments.end()));
    return 0;
}
