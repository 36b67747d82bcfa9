#!/usr/bin/env bash
# Makes the Debian package from a built tree, unpacks it into a scratch root and checks it:
# the files and manual pages are there, the programs start from there, the dependencies were computed, and the
# desktop entry and the AppStream file validate.
#   packaging/check_package.sh BUILD_DIR
set -euo pipefail
build=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

(cd "$build" && cpack -G DEB -B "$work/out" > "$work/cpack.log") || { cat "$work/cpack.log"; exit 1; }
deb=$(ls "$work"/out/nerit-tuner_*.deb)
dpkg-deb -x "$deb" "$work/root"
root=$work/root
metainfo=usr/share/metainfo/io.github.nerit_tuner.NeritTuner.metainfo.xml
for f in usr/bin/nerit usr/bin/nerit-cli usr/bin/nerit-sim usr/share/applications/nerit.desktop \
  usr/share/icons/hicolor/scalable/apps/nerit.svg "$metainfo"; do
  [ -f "$root/$f" ] || { echo "missing from the package: /$f"; exit 1; }
done

for program in nerit nerit-cli nerit-sim; do
  page=$root/usr/share/man/man1/$program.1.gz
  zcat "$page" 2>/dev/null | grep -q "^\.TH ${program^^} \"1\" .* \"$program 0\.1\.0\"" \
    || { echo "no manual page /usr/share/man/man1/$program.1.gz, or not for $program 0.1.0"; exit 1; }
done

"$root/usr/bin/nerit-cli" --help | grep -q "show FILE.inj" || { echo "nerit-cli --help"; exit 1; }
version=$(QT_QPA_PLATFORM=offscreen "$root/usr/bin/nerit" --version)
[ "$version" = "nerit 0.1.0" ] || { echo "nerit --version said: $version"; exit 1; }

depends=$(dpkg-deb -f "$deb" Depends)
echo "Depends: $depends"
grep -q 'libqt6widgets6' <<<"$depends" || { echo "no Qt Widgets dependency"; exit 1; }
grep -q 'libqt6serialport6' <<<"$depends" || { echo "no Qt SerialPort dependency"; exit 1; }

desktop-file-validate "$root/usr/share/applications/nerit.desktop"
appstreamcli validate --no-net "$root/$metainfo"
echo "package ok: $(basename "$deb")"
