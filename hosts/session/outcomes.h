// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "hosts/phones/phone.h"
#include "hosts/phones/phone_listener.h"

namespace hosts {

/// What becomes of the phone's files in a session, for the program to tell its user: a change that did not come about,
/// or a file that could not be read, is kept until the program takes it; what was passed over goes to standard error,
/// if the user wants to know it, under the program's name, a line each, and each once. So do remarks on the phone,
/// whether or not the user has asked. Nothing in a line can steer a terminal.
class Outcomes : public PhoneListener {
public:
    /// While it lives, lines for a terminal wait, since something else is drawn there.
    class Hold {
    public:
        explicit Hold(Outcomes& outcomes);
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;
        ~Hold();

    private:
        Outcomes& _outcomes;
    };

    Outcomes(std::string program, bool tellsPassedOver)
        : _program(std::move(program)), _tellsPassedOver(tellsPassedOver) {}

    /// Whether the user wants to know what is passed over.
    bool tellsPassedOver() const { return _tellsPassedOver; }

    /// The first change that has not come about since this was last asked or, where there is none, the first file that
    /// could not be read or, where there is none either, the first change that the phone was not told of; nothing where
    /// all went well.
    std::optional<platform::Problem> takeProblem();

    /// Each of them by itself: the first change that has not come about, and the first file that could not be read,
    /// since this was last asked.
    std::optional<platform::Problem> takeUnsaved() { return std::exchange(_unsaved, std::nullopt); }
    std::optional<platform::Problem> takeUnread() { return std::exchange(_unread, std::nullopt); }
    std::optional<platform::Problem> takeUntold() { return std::exchange(_untold, std::nullopt); }

    /// Whether a change has come about since this was last asked.
    bool takeSaved() { return std::exchange(_hasSaved, false); }

    /// The last remarks that have been made since this was last asked, each the first time it was made.
    std::vector<std::string> takeRemarks() { return std::exchange(_remarks, {}); }

    /// What a screen shows for a while at the end of a turn. It may hold any bytes.
    struct Notice {
        std::string text;
        /// Whether a change has not come about, so that what is seen may be what was wanted and is not so.
        bool isUnsaved = false;
        bool isProblem = false;
    };

    /// Both of the above, in words. That a file could not be read is left out where the notice just before was about
    /// the same file: what is drawn anew after a change that has failed meets the same obstacle.
    std::optional<Notice> takeNotice();

    void passedOver(const platform::Problem& problem) override;
    void changed(std::string_view, const platform::Dictionary&, const platform::Dictionary&) override {
        _hasSaved = true;
        _isLastUnsaved = false;
    }
    void notRead(const platform::Problem& problem) override;
    void notChanged(const platform::Problem& problem, bool wasTried) override;
    void remark(const std::string& sentence) override;
    void notTold(const platform::Problem& problem) override;
    void kept(std::string_view, const KeptCopy&) override {}

private:
    std::string takeProblemText(Notice& notice);
    bool noteNew(const std::string& line);
    void sayOrHold(std::string line);

    std::string _program;
    bool _tellsPassedOver;
    std::optional<platform::Problem> _unsaved;
    std::optional<platform::Problem> _unread;
    std::optional<platform::Problem> _untold;
    bool _hasSaved = false;
    bool _isLastUnsaved = false;
    /// The file of the last notice; empty when the turn after it went well.
    std::string _lastFile;
    std::vector<std::string> _remarks;
    std::set<std::string> _said;
    std::size_t _saidBytes = 0;
    bool _areHeld = false;
    std::vector<std::string> _held;
    std::size_t _leftOut = 0;
};

/// How users are told of a change that has not come about, and of a file in whose stead defaults are shown. Any bytes.
std::string unsavedText(const platform::Problem& problem);
std::string defaultsText(const platform::Problem& problem);

/// What users are told when their phone goes.
std::string lossText(const PhoneEvent& loss);

}  // namespace hosts
