// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "platform/services/file_listener.h"

namespace hosts {

/// What a file of the phone held that was written over without having been understood.
struct KeptCopy {
    std::string path;
    bool isOnPhone = false;  ///< whether the path is the phone's, and not this machine's

    bool operator==(const KeptCopy&) const = default;
};

/// Is told, besides what becomes of files, what their users should know of the phone. Calls come as a FileListener's
/// do.
class PhoneListener : public platform::FileListener {
public:
    /// A sentence for the user, without a full stop at its end: what the phone's file system does not promise, or where
    /// something that was written over has been kept. The same may be told many times. It may hold any bytes.
    virtual void remark(const std::string& sentence) = 0;

    /// That the phone's own programs have not been told of a change that is made. The reason is a whole sentence.
    virtual void notTold(const platform::Problem& problem) = 0;

    /// Where what the file held is kept. Told before the change that has written over it.
    virtual void kept(std::string_view path, const KeptCopy& copy) = 0;
};

}  // namespace hosts
