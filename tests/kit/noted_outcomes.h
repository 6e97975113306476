// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "hosts/phones/phone_listener.h"

namespace kit {

/// What a file system and its dictionaries have told.
class NotedOutcomes final : public hosts::PhoneListener {
public:
    void passedOver(const platform::Problem&) override {}
    void changed(std::string_view path, const platform::Dictionary& before,
                 const platform::Dictionary& after) override {
        changes.push_back({std::string(path), before, after});
    }
    void notRead(const platform::Problem& problem) override { unread.push_back(problem.text()); }
    void notChanged(const platform::Problem& problem, bool wasTried) override {
        problems.push_back(problem.text());
        tried.push_back(wasTried);
    }
    void remark(const std::string& sentence) override { remarks.push_back(sentence); }
    void notTold(const platform::Problem& problem) override { problems.push_back(problem.text()); }
    void kept(std::string_view, const hosts::KeptCopy& copy) override { copies.push_back(copy); }

    struct Change {
        std::string path;
        platform::Dictionary before;
        platform::Dictionary after;
    };
    std::vector<Change> changes;
    std::vector<std::string> unread;
    std::vector<std::string> problems;
    std::vector<bool> tried;
    std::vector<std::string> remarks;
    std::vector<hosts::KeptCopy> copies;
};

}  // namespace kit
