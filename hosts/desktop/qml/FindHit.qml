// SPDX-License-Identifier: MIT
import QtQuick
import Trivel3.Settings

/// Something that was found: what a page says, and where. What is typed here is for the field.
SheetRow {
    required property int index
    required text
    required property string place

    detail: place
    leads: true
    isForTyping: true
}
