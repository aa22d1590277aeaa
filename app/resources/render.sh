#!/bin/sh
# Renders the pictures of the program's icon and of the toolbar from their drawings. Needs rsvg-convert.
set -e
cd "$(dirname "$0")"
for size in 16 24 32 48 64 128 256; do
    rsvg-convert --width "$size" --height "$size" reader.svg --output "reader-$size.png"
done
for drawing in toolbar/*.svg; do
    for size in 24 48 72; do
        rsvg-convert --width "$size" --height "$size" "$drawing" --output "${drawing%.svg}-$size.png"
    done
done
