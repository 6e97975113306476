// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "platform/foundation/export.h"
#include "platform/foundation/result.h"
#include "platform/foundation/value.h"

namespace platform {

/// Is told what becomes of the phone's files, for the program around the pane: the pages themselves are silent about
/// it. Calls come while the operation that they tell of is under way, on its thread; a listener asks nothing of the
/// file system meanwhile.
class TRIVEL3_PLATFORM_EXPORT FileListener {
public:
    virtual ~FileListener() = default;

    /// A file or folder that is there could not be used. The same may be told many times.
    virtual void passedOver(const Problem& problem) = 0;

    /// A file of settings has been changed, or would have been, had it not held just that already.
    virtual void changed(std::string_view path, const Dictionary& before, const Dictionary& after) = 0;

    /// A file of settings that may be there could not be read just now, and reads as nothing; it may be readable later.
    /// What is shown of it until the turn ends are defaults, and no change is made.
    virtual void notRead(const Problem& problem) = 0;

    /// A change of a file of settings did not come about. It was not even tried where the new content has no form as a
    /// file.
    virtual void notChanged(const Problem& problem, bool wasTried) = 0;
};

/// For services whose user may not want to know.
inline void tellPassedOver(FileListener* listener, std::string_view path, std::string_view reason) {
    if (listener) listener->passedOver({std::string(path), {}, std::string(reason)});
}

}  // namespace platform
