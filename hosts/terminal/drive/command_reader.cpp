// SPDX-License-Identifier: MIT
#include "hosts/terminal/drive/command_reader.h"

#include <utility>

namespace hosts::terminal {
namespace {

using nlohmann::json;

// Takes the line's parts as they are read.
class CommandBuilder final : public nlohmann::json_sax<json> {
public:
    json take() { return std::move(_command); }

    bool null() override { return put(nullptr); }
    bool boolean(bool flag) override { return put(flag); }
    bool number_integer(number_integer_t number) override { return put(number); }
    bool number_unsigned(number_unsigned_t number) override { return put(number); }
    bool number_float(number_float_t number, const string_t&) override { return put(number); }
    bool string(string_t& text) override { return put(std::move(text)); }
    bool binary(binary_t&) override { return put(nullptr); }

    bool start_object(std::size_t) override {
        put(_depth < keptDepth ? json(json::object()) : json(nullptr));
        if (_depth == 1 && _place) _inner = _place;
        return open();
    }
    bool key(string_t& name) override {
        json* object = _depth == 1 ? &_command : _depth == keptDepth ? _inner : nullptr;
        _place = object ? &(*object)[name] : nullptr;
        return true;
    }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override {
        put(nullptr);
        return open();
    }
    bool end_array() override { return close(); }
    bool parse_error(std::size_t, const std::string&, const json::exception&) override { return false; }

private:
    static constexpr std::size_t keptDepth = 2;

    bool put(json value) {
        if (_depth == 0)
            _command = std::move(value);
        else if (_place)
            *_place = std::move(value);
        return true;
    }
    bool open() {
        ++_depth;
        _place = nullptr;
        return true;
    }
    bool close() {
        --_depth;
        _place = nullptr;
        if (_depth < keptDepth) _inner = nullptr;
        return true;
    }

    json _command;
    json* _inner = nullptr;  ///< the object one level down that is being read
    json* _place = nullptr;  ///< where the next value goes; null for one that is read over
    std::size_t _depth = 0;  ///< containers that are open
};

}  // namespace

json readCommand(const std::string& line) {
    CommandBuilder builder;
    if (!json::sax_parse(line, &builder)) return nullptr;
    json command = builder.take();
    return command.is_object() ? command : json(nullptr);
}

}  // namespace hosts::terminal
