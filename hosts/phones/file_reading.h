// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "hosts/system/descriptor.h"
#include "platform/services/file_system.h"

namespace hosts {

/// Flags to open a file with that may be anything: nothing is waited for, and no terminal is taken.
int readingFlags();

/// Opens a file for reading by `open`, which gives nothing, with errno set, on failure. While another program holds a
/// lease on the file it is waited for, a second at most.
Descriptor openToRead(const std::function<Descriptor()>& open);

/// Reads an open regular file to its end. The stamp was taken before, and so was `told`, which is set, unless it is
/// null, once the file has told it. The problem names `path`.
platform::Result<platform::Stamp> readOpened(FileCalls& calls, const Descriptor& file, std::string_view path,
                                             std::string& contents, std::size_t limit,
                                             std::optional<struct stat>* told = nullptr);

/// Whether the open file holds just these bytes; nothing, with errno set, when it cannot be read.
std::optional<bool> holdsJust(FileCalls& calls, const Descriptor& file, std::string_view contents);

/// That the file could not be opened or read, for the reason of an errno value.
platform::Problem readingProblem(std::string_view path, int error);

/// The stamp of what is open; nothing, with errno set, when that cannot be told.
platform::Result<platform::Stamp> stampOf(FileCalls& calls, const Descriptor& file, std::string_view path);

std::string notAFile(mode_t mode);
std::string tooLarge(std::uint64_t size, std::size_t limit);

/// Whether what is open lies on a file system that the kernel itself keeps: it stamps the files there by its own clock,
/// to the tick, and tells of their changes. Others have a clock that is elsewhere, or count in seconds.
bool isFileSystemOfKernel(int file);

/// Whether it lies on one that is a program, as mounts over a network or of a phone often are. What that says it has
/// made durable may be in its memory.
bool isFileSystemOfProgram(int file);

/// Whether nothing that is written there outlasts the machine's power.
bool isFileSystemInMemory(int file);

}  // namespace hosts
