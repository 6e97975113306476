// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "hosts/session/services.h"

namespace hosts {

/// What the pages of a session reach the phone by. It is the outside as it is but, for a while, a layer over it that is
/// dropped: a page that is only to see what has changed may repair what it likes, and nothing is written or posted.
class PageServices {
public:
    /// All that `outside` refers to outlives the object.
    explicit PageServices(const SessionServices& outside)
        : _files(outside.files), _notifications(outside.notifications, outside.files), _listener(outside.listener) {}
    PageServices(const PageServices&) = delete;
    PageServices& operator=(const PageServices&) = delete;

    platform::FileSystem& files() { return _files; }
    platform::DarwinNotifyCenter& notifications() { return _notifications; }
    platform::FileListener& listener() { return _listener; }

    /// Posts, in their order, what has waited for the changes that it is about to land.
    void releaseNotifications() { _notifications.release(); }

    /// While it lives, what pages write stays in it.
    class Layer {
    public:
        explicit Layer(PageServices& services) : _services(services) { _services.setLayered(true); }
        Layer(const Layer&) = delete;
        Layer& operator=(const Layer&) = delete;
        ~Layer() { _services.setLayered(false); }

    private:
        PageServices& _services;
    };

private:
    class Files final : public platform::FileSystem {
    public:
        explicit Files(platform::FileSystem& below) : _below(below) {}
        void setLayered(bool layered) { layered ? void(_layer.emplace(_below)) : _layer.reset(); }

        using platform::FileSystem::readFile;
        platform::Result<platform::Stamp> look(std::string_view path) const override { return seen().look(path); }
        platform::Result<platform::Stamp> readFile(std::string_view path, std::string& contents,
                                                   std::size_t limit) const override {
            return seen().readFile(path, contents, limit);
        }
        platform::Result<platform::Stamp> readAgain(std::string_view path, std::string& contents) const override {
            return seen().readAgain(path, contents);
        }
        platform::Result<std::vector<std::string>> listFolder(std::string_view path) const override {
            return seen().listFolder(path);
        }
        platform::Result<platform::Stamp> changeFile(std::string_view path, const platform::Change& change) override {
            return _layer ? _layer->changeFile(path, change) : _below.changeFile(path, change);
        }
        bool isFar() const override { return _below.isFar(); }
        bool landsTogether() const override { return !_layer && _below.landsTogether(); }
        void expect(std::span<const std::string> files, std::span<const std::string> folders) const override {
            _below.expect(files, folders);
        }
        void endTurn() override { _below.endTurn(); }

    private:
        const platform::FileSystem& seen() const {
            if (_layer) return *_layer;
            return _below;
        }

        platform::FileSystem& _below;
        std::optional<ScratchFileSystem> _layer;
    };

    struct Notifications final : platform::DarwinNotifyCenter {
        Notifications(platform::DarwinNotifyCenter& outside, const platform::FileSystem& phone)
            : center(outside), files(phone) {}
        void postNotification(std::string_view name) override {
            if (isLayered) return;
            files.landsTogether() ? void(held.emplace_back(name)) : center.postNotification(name);
        }
        void release() {
            for (const std::string& name : std::exchange(held, {}))
                center.postNotification(name);
        }
        platform::DarwinNotifyCenter& center;
        const platform::FileSystem& files;
        std::vector<std::string> held;
        bool isLayered = false;
    };

    struct Listener final : platform::FileListener {
        explicit Listener(platform::FileListener* outside) : next(outside) {}
        void passedOver(const platform::Problem& problem) override {
            if (next) next->passedOver(problem);
        }
        void changed(std::string_view path, const platform::Dictionary& before,
                     const platform::Dictionary& after) override {
            if (next && !isLayered) next->changed(path, before, after);
        }
        void notRead(const platform::Problem& problem) override {
            if (next) next->notRead(problem);
        }
        void notChanged(const platform::Problem& problem, bool wasTried) override {
            if (next && !isLayered) next->notChanged(problem, wasTried);
        }
        platform::FileListener* next;
        bool isLayered = false;
    };

    void setLayered(bool layered) {
        _files.setLayered(layered);
        _notifications.isLayered = layered;
        _listener.isLayered = layered;
    }

    Files _files;
    Notifications _notifications;
    Listener _listener;
};

}  // namespace hosts
