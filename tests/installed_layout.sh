#!/usr/bin/env bash
# Installs the build into a scratch DESTDIR and checks what a desktop and a shell get:
# every file in its place, the desktop entry and metainfo valid, the man pages
# rendering without warnings, class files of both forms known by their type and other
# *.class files not, the installed tarnctl running, and its completion completing
# configuration names.
set -euo pipefail
build=${1:?usage: installed_layout.sh BUILD_DIR}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
root=$scratch/root
DESTDIR=$root cmake --install "$build" --prefix /usr >/dev/null

app=org.tarnworkbench.Tarn
expected=(
  usr/bin/tarn usr/bin/tarnctl
  usr/share/applications/$app.desktop
  usr/share/metainfo/$app.metainfo.xml
  usr/share/mime/packages/$app.xml
  usr/share/icons/hicolor/scalable/apps/$app.svg
  usr/share/man/man1/tarn.1.gz usr/share/man/man1/tarnctl.1.gz
  usr/share/doc/tarn/copyright usr/share/doc/tarn/changelog.gz
  usr/share/bash-completion/completions/tarnctl
)
for size in 16 22 24 32 48 64 128 256; do
  expected+=(usr/share/icons/hicolor/${size}x${size}/apps/$app.png)
done
status=0
for file in "${expected[@]}"; do
  [ -s "$root/$file" ] || { echo "missing: /$file"; status=1; }
done

if command -v desktop-file-validate >/dev/null; then
  desktop-file-validate "$root/usr/share/applications/$app.desktop" || status=1
fi
if command -v appstreamcli >/dev/null; then
  appstreamcli validate --no-net "$root/usr/share/metainfo/$app.metainfo.xml" >/dev/null || status=1
fi
for page in tarn tarnctl; do
  warnings=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -l "$root/usr/share/man/man1/$page.1.gz" 2>&1 >/dev/null)
  [ -z "$warnings" ] || { echo "$page.1: $warnings"; status=1; }
done

# The desktop's MIME database from the installed type, beside the system's own types.
XDG_DATA_DIRS="$root/usr/share:/usr/share" update-mime-database "$root/usr/share/mime"
source_dir=$(cd "$(dirname "$0")" && pwd)
printf '\xca\xfe\xba\xbe\x00\x00\x00\x3d' >"$scratch/Foreign.class"
for row in "test_set_protected.class application/x-tarn-class" "test_set_unprotected.class application/x-tarn-class" \
  "$scratch/Foreign.class application/x-java"; do
  read -r file wanted <<<"$row"
  [[ $file == /* ]] || file=$source_dir/data/$file
  type=$(XDG_DATA_HOME="$scratch/nothing" XDG_DATA_DIRS="$root/usr/share:/usr/share" \
    gio info -a standard::content-type "$file" | sed -n 's/^ *standard::content-type: //p')
  [ "$type" = "$wanted" ] || { echo "$(basename "$file") is taken for $type, not $wanted"; status=1; }
done

version=$("$root/usr/bin/tarnctl" --version)
[[ $version == "tarnctl "* ]] || { echo "installed tarnctl --version said: $version"; status=1; }

completion=/usr/share/bash-completion/bash_completion
if [ -r "$completion" ]; then
  data=$scratch/data
  PATH=$root/usr/bin:$PATH tarnctl --data-dir "$data" -q init
  for name in "Two Words" "O'Brien set" 'back\slash "quoted"' -dash; do
    PATH=$root/usr/bin:$PATH tarnctl --data-dir "$data" new -- "$name"
  done
  # The words before the one completed, that word as typed, and the one name offered:
  # stored names come back as stored, and readline quotes them as it inserts them.
  rows=(
    export 'T' 'Two Words'
    export 'O' "O'Brien set"
    delete "O\\'B" "O'Brien set"
    copy "'O'\\''B" "O'Brien set"
    'check --config' '"back\\' 'back\slash "quoted"'
    'delete --' '-' '-dash'
  )
  for ((row = 0; row < ${#rows[@]}; row += 3)); do
    got=$(PATH=$root/usr/bin:$PATH bash -c '
      source "$1"; source "$2"
      COMP_WORDS=(tarnctl --data-dir "$3" $4 "$5"); COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
      COMP_LINE="${COMP_WORDS[*]}"; COMP_POINT=${#COMP_LINE}
      _tarnctl; printf "%s\n" "${COMPREPLY[@]}"' _ "$completion" \
      "$root/usr/share/bash-completion/completions/tarnctl" "$data" "${rows[row]}" "${rows[row + 1]}")
    [ "$got" = "${rows[row + 2]}" ] || { echo "completion of ${rows[row]} ${rows[row + 1]} gave: $got"; status=1; }
  done
fi
exit $status
