#!/bin/sh
# Plays a tune into an Ogg Vorbis file that repeats without a seam:  render.sh TUNE.abc TUNE.ogg
# docs/formats/music-source.md says what a tune holds. What is wrong with one is said as "file: reason".
set -eu
export LC_ALL=C

tune=$1
ogg=$2
font=${RUSTPIKE_SOUNDFONT:-/usr/share/sounds/sf3/FluidR3Mono_GM.sf3}
rate=44100
level=-21   # dBFS of the whole piece, root mean square: all pieces are equally loud
ceiling=-1  # dBFS no sample exceeds
headroom=-2 # dBFS of the loudest sample before encoding, which moves peaks a little
shortest=40 # seconds

fail() {
  echo "$tune: $*" >&2
  exit 1
}

for tool in abc2midi:abcmidi mftext:abcmidi fluidsynth:fluidsynth sox:sox oggenc:vorbis-tools; do
  command -v "${tool%:*}" >/dev/null || fail "needs ${tool%:*} (package ${tool#*:})"
done
[ -r "$font" ] || fail "needs $font (package fluidr3mono-gm-soundfont)"
[ -r "$tune" ] || fail "cannot be read"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# calculate EXPRESSION: one number
calculate() { awk "BEGIN { printf \"%.9g\", $1 }"; }
# holds CONDITION: of numbers
holds() { awk "BEGIN { exit !($1) }"; }

# header FIELD: the text of a line "FIELD..." before the notes
header() {
  awk -v field="$1" 'index($0, field) == 1 { print substr($0, length(field) + 1); exit } /^K:/ { exit }' "$tune"
}

# --- Notes. abc2midi warns of bars that do not add up and of voices that end apart; neither may loop.
abc2midi "$tune" -o "$work/tune.mid" >"$work/notes" 2>&1 ||
  fail "abc2midi broke off (are there more numbers than hits after a %%MIDI drum?) $(sed 1d "$work/notes" | tail -n 1)"
if grep -E 'Warning|Error' "$work/notes" >"$work/faults"; then
  sed "s|^.*line-char \([0-9]*\)-[0-9]* : |$tune:\1: |" "$work/faults" >&2
  exit 1
fi

# --- Length: bars, metre and tempo as written, which what abc2midi made of them has to equal.
bars=$(header '% bars: ')
metre=$(header 'M:')
tempo=$(header 'Q:')
echo "$bars" | grep -qE '^[0-9]+$' || fail "no line '% bars: N' before K:"
echo "$metre" | grep -qE '^[0-9]+/[0-9]+$' || fail "M: is '$metre', not N/N"
echo "$tempo" | grep -qE '^[0-9]+/[0-9]+=[0-9]+$' || fail "Q: is '$tempo', not N/N=N"
quarters=$(calculate "$bars * ($metre) * 4")
# abc2midi ends every track 26 ticks late.
played=$(mftext "$work/tune.mid" |
  awk -F'[= ]' '/division=/ { division = $NF } /end of track/ && $2 + 0 > end { end = $2 }
                END { printf "%.3f", (end - 26) / division }')
holds "$played - $quarters < 0.01 && $quarters - $played < 0.01" ||
  fail "plays $played quarter notes; $bars bars of $metre are $quarters"
beat=${tempo%=*}
seconds=$(calculate "$bars * ($metre) / ($beat) * 60 / ${tempo#*=}")
holds "$seconds >= $shortest" || fail "repeats after $seconds s; a piece lasts at least $shortest s"
samples=$(calculate "int($seconds * $rate + 0.5)")

# --- Sound. What rings on after the last bar is laid over the first, as it will be when the piece repeats.
# (sox warns of a header fluidsynth leaves out; its own failures still stop the script.)
fluidsynth -ni -q -r $rate -T wav -O float -o synth.cpu-cores=1 -o synth.dynamic-sample-loading=1 \
  -F "$work/played.wav" "$font" "$work/tune.mid" >"$work/log" 2>&1 || fail "fluidsynth: $(tail -n 1 "$work/log")"
sox -V1 "$work/played.wav" -e float -b 32 "$work/body.wav" trim 0 "${samples}s"
sox -V1 "$work/played.wav" -e float -b 32 "$work/tail.wav" trim "${samples}s"
sox -V1 -m -v 1 "$work/body.wav" -v 1 "$work/tail.wav" -e float -b 32 "$work/loop.wav" trim 0 "${samples}s"

# seam FILE ALLOWANCE: refuses a click where the file repeats, a bend of the curve more than four times as sharp as
# bends of the 50 ms before usually are.
seam() {
  sox -V1 "$1" -t dat "$work/end.dat" trim "$((samples - rate / 20))s"
  sox -V1 "$1" -t dat "$work/start.dat" trim 0 2s
  bends=$(awk 'function bend(a, b, c) { c += a - 2 * b; return c < 0 ? -c : c }
               /^;/ { next }
               { left = bend(l2, l1, $2); right = bend(r2, r1, $3); l2 = l1; l1 = $2; r2 = r1; r1 = $3
                 worse = left > right ? left : right }
               FILENAME == last && last ~ /end/ && ++n > 2 { sum += worse * worse }
               FILENAME ~ /start/ && worse > most { most = worse }
               { last = FILENAME }
               END { printf "%.5f %.5f", most, sqrt(sum / n) }' "$work/end.dat" "$work/start.dat")
  holds "${bends% *} <= 4 * ${bends#* } + $2" ||
    fail "clicks where it repeats: the curve bends by ${bends% *} there, by ${bends#* } before"
}

# measure FILE: "RMS PEAK" in dBFS
measure() {
  sox -V1 "$1" -n stat 2>&1 |
    awk 'function decibels(x) { return x > 0 ? 20 * log(x) / log(10) : -200 }
         /^Maximum amplitude/ { high = $3 } /^Minimum amplitude/ { low = -$3 } /^RMS.*amplitude/ { rms = $3 }
         END { printf "%.2f %.2f", decibels(rms), decibels(high > low ? high : low) }'
}
measured=$(measure "$work/loop.wav")
rms=${measured% *} peak=${measured#* }
gain=$(calculate "($level - $rms < $headroom - $peak) ? $level - $rms : $headroom - $peak")
sox -V1 -D "$work/loop.wav" -b 24 "$work/level.wav" vol "${gain}dB"

# One serial number a name, so that the same source gives the same bytes.
mkdir -p "$(dirname "$ogg")"
serial=$(basename "$tune" .abc | cksum | cut -c 1-9 | tr -d ' ')
oggenc -Q -q 4 -s "$serial" -o "$work/tune.ogg" "$work/level.wav" >"$work/log" 2>&1 ||
  fail "oggenc: $(tail -n 1 "$work/log")"

# --- What players will hear: decoded again and measured.
sox -V1 "$work/tune.ogg" -e float -b 32 "$work/heard.wav"
heard=$(soxi -V1 -s "$work/heard.wav")
[ "$heard" = "$samples" ] || fail "holds $heard samples; $seconds s are $samples"
measured=$(measure "$work/heard.wav")
rms=${measured% *} peak=${measured#* }
holds "$rms > $level - 1 && $rms < $level + 1" ||
  fail "plays at $rms dBFS, not $level: single peaks (drums?) are too loud for the rest"
holds "$peak <= $ceiling" || fail "peaks at $peak dBFS, above $ceiling"

seam "$work/level.wav" 0.0002
seam "$work/heard.wav" 0.003 # either end has coding errors of its own

mv "$work/tune.ogg" "$ogg"
[ -z "${RUSTPIKE_MUSIC_REPORT:-}" ] ||
  printf '%s bars=%s metre=%s tempo=%s seconds=%.2f rms=%s peak=%s seam=%s usual=%s\n' \
    "$(basename "$tune" .abc)" "$bars" "$metre" "$tempo" "$seconds" "$rms" "$peak" "${bends% *}" "${bends#* }"
