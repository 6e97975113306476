# SPDX-License-Identifier: MIT
# Makes the folder TO a copy of the folder FROM and of nothing else. A .gitkeep stands for "this
# folder is empty" in the checkout and is left out.
file(REMOVE_RECURSE ${TO})
file(COPY ${FROM}/ DESTINATION ${TO} PATTERN .gitkeep EXCLUDE)
