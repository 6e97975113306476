// SPDX-License-Identifier: MIT
#include "settings_writers.h"

#include <cstdio>
#include <iostream>
#include <utility>

#include "platform/foundation/property_list.h"
#include "store/preference_store.h"
#include "tests/kit/phone.h"

namespace reliability_test {

using platform::Dictionary;
using platform::Value;
using trivel3::PreferenceStore;

void SettingsWriter::countFailure(const std::string& why) {
    ++_failures;
    std::cerr << "a writer: " << why << '\n';
}

PaneWriter::PaneWriter(const std::string& phone)
    : _files(kit::openPhone(phone, _calls)),
      _platform{_files,
                _host.services().notifications,
                _host.services().classes,
                _host.services().system,
                _host.services().application,
                _host.services().deviceQuery,
                _host.services().mail,
                _host.services().posts,
                _host.services().device,
                _host.services().screen,
                this} {}

void PaneWriter::set(const std::string& key, std::int64_t value) {
    PreferenceStore{_platform}.setPreferenceForKey(value, key);
    _platform.dictionaries.forget();
    _host.log.take();
}

std::int64_t PaneWriter::stored(const std::string& key) {
    const std::int64_t value = platform::integerValue(PreferenceStore{_platform}.storedValueForKey(key));
    _platform.dictionaries.forget();
    return value;
}

LocklessWriter::LocklessWriter(std::string settingsFile, const std::string& name)
    : _file(std::move(settingsFile)), _temporary(_file + "." + name) {}

Dictionary LocklessWriter::read() {
    const auto reading = platform::readPropertyList(kit::readText(_file));
    if (reading && reading.value->dictionary()) return *reading.value->dictionary();
    countFailure("cannot read the settings");
    return {};
}

void LocklessWriter::set(const std::string& key, std::int64_t value) {
    Dictionary content = read();
    content.set(key, value);
    kit::writeText(_temporary, *platform::writeXmlPropertyList(Value(content)).bytes);
    if (std::rename(_temporary.c_str(), _file.c_str()) != 0) countFailure("cannot rename");
}

std::int64_t LocklessWriter::stored(const std::string& key) {
    return platform::integerValue(read().valueForKey(key));
}

}  // namespace reliability_test
