#!/usr/bin/env bash
# The Debian package as a user gets it: made by CPack from a build tree,
# unpacked into a temporary root (dpkg-deb -x, no root rights), and run from
# there, from a directory outside the source tree, against a temporary
# container. Everything the program reads must come from the unpacked tree.
#
#   tests/package/run.sh CPACK BUILD_DIR
set -euo pipefail

cpack=$1
build=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
  echo "package test: $*" >&2
  exit 1
}

# gzip: the sanitizer build is large and the default compression slow.
if ! "$cpack" --config "$build/CPackConfig.cmake" -B "$work/out" -D CPACK_DEBIAN_COMPRESSION_TYPE=gzip \
  >"$work/cpack.log" 2>&1; then
  cat "$work/cpack.log" >&2
  fail "cpack failed"
fi
debs=("$work"/out/quorvane-widgets_*_*.deb)
[[ -f ${debs[0]} ]] || fail "no quorvane-widgets_VERSION_ARCH.deb in $(ls "$work/out")"
deb=${debs[0]}
depends=$(dpkg-deb -f "$deb" Depends)
[[ $depends == *fonts-inter* && $depends == *libc6* ]] || fail "Depends lacks the font or the shared libraries: $depends"

root=$work/root
dpkg-deb -x "$deb" "$root"
[[ -e $root/usr/share/bash-completion/completions/qrv-widgets ]] || fail "no bash completion"
ls "$root"/usr/share/man/man1/qrv-widgets.1* >/dev/null 2>&1 || fail "no manual page"

# Nothing may point the program back at the build or source tree.
unset QRV_RESOURCE_DIR QRV_UNIT_SYSTEM_PATH
export QRV_APP_GROUP_CONTAINER=$work/nowhere
qrv=$root/usr/bin/qrv-widgets
container=$work/container
cd "$work"

"$root/usr/share/quorvane-widgets/make-demo-container" "$container" >/dev/null
"$qrv" --version

"$qrv" render --out gallery --container "$container" --scheme light >"$work/render.log" 2>&1 ||
  { cat "$work/render.log" >&2; fail "render failed"; }
[[ -f gallery/index.html && -f gallery/manifest.json ]] || fail "render wrote no gallery"
ls gallery/*.png >/dev/null 2>&1 || ls gallery/*/*.png >/dev/null 2>&1 || fail "render drew no PNG"
# A text shown as its key means the string table was not found.
if grep -q 'dashb\.' gallery/manifest.json; then fail "texts drawn as their keys: no string table"; fi

# Water logged in cups shows converted to the entry's unit only when the unit
# library was found beside the program's install.
"$qrv" log-water --container "$container" --unit cups --amount 2
with=$("$qrv" timeline --widget water --container "$container")
without=$(QRV_UNIT_SYSTEM_PATH=/nonexistent "$qrv" timeline --widget water --container "$container")
[[ $with != "$without" ]] || fail "the unit library was not loaded from the package"
echo "package test: $(basename "$deb") unpacks and runs"
