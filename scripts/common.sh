# Shared by the project's scripts: installs what is missing and configures a build folder.
set -euo pipefail

ZEB_ROOT="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
ZEB_PACKAGES=(cmake ninja-build g++ ccache qt6-base-dev libqt6sql6-sqlite fonts-dejavu-core fonts-liberation2 poppler-utils qt6-tools-dev postgresql libqt6sql6-psql libpq-dev libsqlite3-dev pkgconf libqpdf-dev qpdf qt6-base-private-dev xvfb at-spi2-core dbus-x11 python3-pyatspi qt6-pdf-dev libcsv-dev doxygen appstream dpkg-dev file desktop-file-utils qtbase5-doc-dev clang-format)

zeb_sudo() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# Installs the Debian packages that are not installed yet; does nothing when all are there.
zeb_ensure_packages() {
  local missing=()
  local p
  for p in "$@"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
      missing+=("$p")
    fi
  done
  if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing Debian packages: ${missing[*]}"
    zeb_sudo apt-get update -q
    DEBIAN_FRONTEND=noninteractive zeb_sudo apt-get install -y -q "${missing[@]}"
  fi
}

# zeb_configure DIR [cmake options...]: configures DIR once; later runs only build.
zeb_configure() {
  local dir="$1"; shift
  if [ ! -f "$dir/build.ninja" ]; then
    local launcher=()
    # ccache keeps rebuilds of a fresh checkout and of the second configuration short.
    if command -v ccache >/dev/null 2>&1; then
      launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    fi
    cmake -S "$ZEB_ROOT" -B "$dir" -G Ninja "${launcher[@]}" "$@"
  fi
}

zeb_jobs() {
  nproc 2>/dev/null || echo 2
}
