# Sourced by ./play and ./test: what this program needs of a Debian 12 machine, and how it is built.

packages=(
  g++ cmake ninja-build ccache pkg-config
  libsdl2-dev libglew-dev libglu1-mesa-dev libgl1-mesa-dri
  libcli11-dev nlohmann-json3-dev libstb-dev libmeshoptimizer-dev
  libgtest-dev libbenchmark-dev libpng-dev
  libopenal-dev libvorbis-dev libfreetype-dev libgeos-dev
  fonts-klee fonts-cabinsketch
  xvfb xauth xdotool
  csound sox abcmidi fluidsynth fluidr3mono-gm-soundfont vorbis-tools
)

say() { printf '== %s\n' "$*"; }

# Installs the packages that are missing; the second time this is one quick look.
ensure_packages() {
  local missing=() name
  for name in "${packages[@]}"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || missing+=("$name")
  done
  [ ${#missing[@]} -eq 0 ] && return
  say "installing ${missing[*]}"
  local as_root=()
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# build PRESET TARGET...
build() {
  local preset=$1
  shift
  if [ ! -f "build/$preset/build.ninja" ]; then
    say "configuring build/$preset"
    cmake --preset "$preset" >/dev/null
  fi
  say "building $preset: $*"
  cmake --build --preset "$preset" --target "$@" | grep -vE '^(\[[0-9]+/[0-9]+\]|ninja: no work)' || true
  # The filter hides ninja's exit code; ask again, now that there is nothing left to do.
  cmake --build --preset "$preset" --target "$@" >/dev/null
}
