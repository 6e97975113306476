// SPDX-License-Identifier: MIT
import QtQuick

    Rectangle{color: "#efeff4" }
