// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "platform/services/file_listener.h"

namespace hosts {

/// Is told, besides what becomes of files, what their users should know of the phone. Calls come as a FileListener's
/// do.
class PhoneListener : public platform::FileListener {
public:
    /// A sentence for the user, without a full stop at its end: what the phone's file system does not promise, or where
    /// something that was written over has been kept. The same may be told many times. It may hold any bytes.
    virtual void remark(const std::string& sentence) = 0;
};

}  // namespace hosts
