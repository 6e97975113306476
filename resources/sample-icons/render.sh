#!/bin/sh
# SPDX-License-Identifier: MIT
# Renders the sample phone's application icons beside the Info.plist files that name them. The
# pictures are checked in, since on a phone they are the applications' own files; run this after
# changing an SVG here. The sizes differ between applications as they do on real phones: by
# CFBundleIcons, by the older CFBundleIconFiles, by the single CFBundleIconFile, and with or without
# the size that a settings row wants.
set -eu
icons=$(cd "$(dirname "$0")" && pwd)
phone=$icons/../sample-phone

render() { # render NAME PIXELS FILE
    folder=$(find "$phone" -type d -name "$1.app")
    rsvg-convert --width "$2" --height "$2" --output "$folder/$3" "$icons/$1.svg"
}

for name in MobileSafari Preferences MobilePhone MobileSMS MobileTimer Maps Alpha CompassRose NightTide Chessnut; do
    render "$name" 58 AppIcon29x29@2x.png
    render "$name" 87 AppIcon29x29@3x.png
    render "$name" 120 AppIcon60x60@2x.png
done
render PocketSundial 120 AppIcon60x60@2x.png
render PocketSundial 180 AppIcon60x60@3x.png
render Zulu 29 Icon-Small.png
render Zulu 58 Icon-Small@2x.png
render Zulu 57 Icon.png
render Zulu 114 Icon@2x.png
render Blabar 57 Icon.png
