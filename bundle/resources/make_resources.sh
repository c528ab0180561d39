#!/bin/sh
# Makes the bundle's pictures and its chime out of their sources. Needs rsvg-convert (librsvg2-bin) and ffmpeg.
set -eu
cd "$(dirname "$0")"

for picture in sources/nivlowallpaper*.svg; do
  rsvg-convert --output "$(basename "$picture" .svg).png" "$picture"
done

# Two strokes of a bell, G5 and then C6, each with the partials that make it one.
bell() { # FREQUENCY START
  at="gte(t,$2)"
  age="max(0,t-$2)"
  printf '%s' "$at*min(1,$age*200)*(0.20*exp(-2.6*$age)*sin(2*PI*$1*$age)+0.08*exp(-4.2*$age)*sin(2*PI*$1*2.01*$age)"
  printf '%s' "+0.05*exp(-6.5*$age)*sin(2*PI*$1*2.76*$age)+0.03*exp(-10*$age)*sin(2*PI*$1*5.4*$age))"
}
ffmpeg -nostdin -loglevel error -y \
  -f lavfi -i "aevalsrc='$(bell 783.99 0)+$(bell 1046.5 0.32)':sample_rate=44100:duration=1.7" \
  -af "afade=out:start_time=1.4:duration=0.3" \
  -c:a aac -b:a 64k -ac 1 -map_metadata -1 -fflags +bitexact -flags:a +bitexact -movflags +faststart \
  hourlychimebeg.m4a
