#!/bin/sh
# Plays one recipe into WAV files: render.sh RECIPE.sound FOLDER
# makes FOLDER/NAME.wav and, with more takes than one, FOLDER/NAME_2.wav and so on: 16 bits, mono, 44.1 kHz.
# The same recipe gives the same bytes: seeds are fixed, and neither dither nor time stamps are written.
set -eu
recipe=$1
folder=$2
bench=$(dirname "$0")
name=$(basename "$recipe" .sound)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
: >"$work/log"

fail() {
  echo "$recipe: $1" >&2
  # csound colours its messages and writes zero bytes into them.
  tr -d '\000\033' <"$work/log" | sed 's/\[m//g' | grep -aE 'rror|line|>>>|[Uu]nexpected|nvalid' | head -20 >&2 || true
  exit 1
}

# setting NAME DEFAULT: from the recipe's lines ";= NAME value"
setting() {
  value=$(sed -n "s/^;= $1 *\([-0-9.]*\).*/\1/p" "$recipe")
  echo "${value:-$2}"
}
takes=$(setting takes 1)
seconds=$(setting seconds 0)
peak=$(setting peak -3)
rise=$(setting rise 0.0004)
fall=$(setting fall 0.02)
[ "$seconds" != 0 ] || fail 'it has no line ";= seconds"'

# Takes start whole seconds apart, so that they are cut at exact samples.
apart=$(awk "BEGIN { print int($seconds) + 2 }")
{
  printf '<CsoundSynthesizer>\n<CsInstruments>\n'
  printf '#include "%s"\n' "$(realpath "$bench")/workbench.inc" "$(realpath "$recipe")"
  printf '</CsInstruments>\n<CsScore>\n'
  take=1
  while [ "$take" -le "$takes" ]; do
    echo "i \"Take\" $(((take - 1) * apart)) $seconds $take"
    take=$((take + 1))
  done
  echo "e $((takes * apart))"
  printf '</CsScore>\n</CsoundSynthesizer>\n'
} >"$work/recipe.csd"

INCDIR=$(realpath "$bench") csound -d -m0 -K --format=au:float -o "$work/all.au" "$work/recipe.csd" \
  >"$work/log" 2>&1 || fail 'csound does not play it:'
grep -q '^.*0 errors in performance' "$work/log" || fail 'csound stumbles over it:'

mkdir -p "$folder"
rm -f "$folder/$name.wav" "$folder/$name"_[2-9].wav
take=1
while [ "$take" -le "$takes" ]; do
  file=$folder/$name.wav
  [ "$take" -eq 1 ] || file=${folder}/${name}_$take.wav
  sox -V1 -D -R "$work/all.au" -b 16 "$file" trim $(((take - 1) * apart)) "$seconds" \
    highpass 25 fade h "$rise" "$seconds" "$fall" gain -n "$peak" stats 2>"$work/log" || fail "sox does not cut take $take"
  ! grep -q 'Pk lev dB *-inf' "$work/log" || fail "take $take is silent"
  take=$((take + 1))
done
