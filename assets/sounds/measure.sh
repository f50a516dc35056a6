#!/bin/sh
# Measures sounds: measure.sh FILE.wav... prints one line each: name, seconds, peak and RMS in dBFS, loudness (dBFS of
# the loudest tenth of a second, as ears weigh it: less below 60 Hz, 4 dB more above 1.5 kHz), mean, first and last
# sample in 16-bit steps, spectral centroid and the centroids of the first and the second half in Hz.
set -eu
centroid() { # FILE EFFECTS...
  sox -V1 "$@" stat -freq 2>&1 | awk 'NF == 2 && $1 + 0 == $1 && $1 > 0 { sum += $2; product += $1 * $2 }
    END { printf "%.0f", (sum > 0 ? product / sum : 0) }'
}
printf '%-18s %6s %7s %7s %7s %7s %6s %6s %7s %7s %7s\n' name s peak rms loud mean first last Hz 1st 2nd
for file; do
  seconds=$(soxi -D "$file")
  half=$(awk "BEGIN { print $seconds / 2 }")
  levels=$(sox -V1 "$file" -n stats 2>&1 | awk '/^Pk lev/ { p = $4 } /^RMS lev/ { r = $4 } END { printf "%.2f %.2f", p, r }')
  loud=$(sox -V1 "$file" -t dat - gain -6 highpass 60 treble 4 1500 | awk '!/^;/ { v = $2 * $2; sum += v - past[n % 4410]
    past[n++ % 4410] = v; if (sum > most) most = sum } END { printf "%.1f", 10 * log(most / 4410 + 1e-12) / log(10) + 6 }')
  edges=$(sox -V1 "$file" -t dat - | awk '!/^;/ { v = $2 * 32768; if (!n++) first = v; sum += v; last = v }
    END { printf "%.1f %.0f %.0f", sum / n, first, last }')
  # shellcheck disable=SC2086
  printf '%-18s %6.3f %7s %7s %7s %7s %6s %6s %7s %7s %7s\n' "$(basename "$file" .wav)" "$seconds" $levels "$loud" $edges \
    "$(centroid "$file" -n)" "$(centroid "$file" -n trim 0 "$half")" "$(centroid "$file" -n trim "$half")"
done
