// SPDX-License-Identifier: MIT
// A module without the one symbol that a bundle's module exports.
extern "C" __attribute__((visibility("default"))) void registerSomethingElse();
void registerSomethingElse() {}
