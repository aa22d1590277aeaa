#!/bin/sh
# Renders the pictures of the program's icon and of the toolbar from their drawings. Needs rsvg-convert and icotool.
set -e
cd "$(dirname "$0")"
for size in 16 24 32 48 64 128 160 256; do
    rsvg-convert --width "$size" --height "$size" reader.svg --output "reader-$size.png"
done
for drawing in toolbar/*.svg; do
    for size in 24 48 72; do
        rsvg-convert --width "$size" --height "$size" "$drawing" --output "${drawing%.svg}-$size.png"
    done
done
# The large one as it is: pictures of that size are compressed in icon files, too.
icotool --create --output reader.ico reader-16.png reader-24.png reader-32.png reader-48.png reader-64.png \
    reader-128.png --raw reader-256.png
