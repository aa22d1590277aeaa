#!/bin/sh
# Renders the pictures of the program's icon from their drawing. Needs rsvg-convert.
set -e
cd "$(dirname "$0")"
for size in 16 24 32 48 64 128 256; do
    rsvg-convert --width "$size" --height "$size" reader.svg --output "reader-$size.png"
done
