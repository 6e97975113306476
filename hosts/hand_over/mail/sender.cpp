// SPDX-License-Identifier: MIT
#include "hosts/hand_over/mail/sender.h"

#include <gmime/gmime.h>

#include <optional>
#include <string_view>

#include "hosts/hand_over/mail/unique_object.h"

namespace hosts {

namespace {

std::string textOrNothing(const char* text) {
    return text == nullptr ? "" : text;
}

std::optional<Sender> senderFromEnvironment() {
    const char* const email = g_getenv("EMAIL");
    const UniqueObject<InternetAddressList> list{email == nullptr ? nullptr
                                                                  : internet_address_list_parse(nullptr, email)};
    if (!list || internet_address_list_length(list.get()) != 1) return std::nullopt;
    InternetAddress* const address = internet_address_list_get_address(list.get(), 0);
    if (!INTERNET_ADDRESS_IS_MAILBOX(address)) return std::nullopt;
    return Sender{textOrNothing(internet_address_get_name(address)),
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

}  // namespace

Sender mailSender() {
    if (auto sender = senderFromEnvironment()) return *sender;
    const std::string name = g_get_real_name();
    return {name == "Unknown" ? "" : name,
            atomOr(g_get_user_name(), "user") + "@" + atomOr(g_get_host_name(), "localhost")};
}

}  // namespace hosts
