#!/usr/bin/env bash
# Writes dist/qelprn-<version>-win64.zip from the Windows build (the windows-mingw preset, built
# first when missing): the three programs, the Qt DLLs and plugins they load, the MinGW runtime,
# the layouts (SYS), the IPAex fonts with their license, Qt's Japanese translation and 導入手順.txt.
# The zip is unpacked as it is into the suite's program folder. Then the installer,
# dist/qelprn-<version>-setup.exe (NSIS, installer.nsi), from the same files.
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../.." && pwd)
cache=${QELPRN_QT_MINGW:-$HOME/.cache/qelprn/qt-6.4.2-mingw64}
qt=$cache/qt
build=$root/build/windows-mingw
version=$(sed -n 's/^project(qelprn VERSION \([0-9.]*\).*/\1/p' "$root/CMakeLists.txt")
name=qelprn-$version-win64
stage=$build/package/$name
zip=$root/dist/$name.zip
objdump=x86_64-w64-mingw32-objdump
gcc_dir=$(dirname "$(x86_64-w64-mingw32-g++-posix -print-libgcc-file-name)")
# Where the DLLs a program imports can come from, first match wins.
dll_dirs=("$qt/bin" "$cache/sqlite/bin" "$gcc_dir" /usr/x86_64-w64-mingw32/lib)

if ! command -v makensis >/dev/null; then
    echo "package: makensis is missing (scripts/windows/setup.sh installs nsis)" >&2
    exit 1
fi
if [[ ! -f $qt/.complete ]]; then
    echo "package: Qt for MinGW is not built; run scripts/windows/build-qt.sh" >&2
    exit 1
fi
cd "$root"
if [[ ! -f $build/build.ninja ]]; then
    cmake --preset windows-mingw >/dev/null
fi
cmake --build "$build" -j "${QELPRN_JOBS:-2}" --target qelprn qelprn-cli qelprn-engine

rm -rf "$stage"
mkdir -p "$stage" "$root/dist"
cp "$build"/bin/{qelprn,qelprn-cli,qelprn-engine}.exe "$stage/"

# Plugins Qt loads at run time: the window system and headless platforms, the SQL drivers, the
# Windows print system, the native style, and image formats (the seal bitmaps).
for dir in platforms sqldrivers printsupport styles imageformats; do
    [[ -d $qt/plugins/$dir ]] || continue
    mkdir -p "$stage/$dir"
    cp "$qt/plugins/$dir"/*.dll "$stage/$dir/"
done

# Every DLL an .exe or plugin imports, followed to the end; system DLLs are found nowhere here.
declare -A seen=()
queue=()
while IFS= read -r f; do queue+=("$f"); done < <(find "$stage" -name '*.exe' -o -name '*.dll')
while ((${#queue[@]})); do
    file=${queue[0]}
    queue=("${queue[@]:1}")
    while IFS= read -r dll; do
        [[ -n ${seen[${dll,,}]:-} ]] && continue
        seen[${dll,,}]=1
        for d in "${dll_dirs[@]}"; do
            if [[ -f $d/$dll ]]; then
                cp "$d/$dll" "$stage/"
                queue+=("$stage/$dll")
                break
            fi
        done
    done < <("$objdump" -p "$file" | sed -n 's/^\s*DLL Name: //p')
done

# Qt looks for its plugins and translations beside the program, not in the build machine's paths.
printf '[Paths]\r\nPrefix = .\r\nPlugins = .\r\nTranslations = translations\r\n' >"$stage/qt.conf"
mkdir -p "$stage/translations"
cp /usr/share/qt6/translations/qtbase_ja.qm "$stage/translations/"

mkdir -p "$stage/SYS"
cp "$root"/layouts/*.wfd "$stage/SYS/"

# The fonts every form is drawn with, and their license (which allows passing them on with it).
mkdir -p "$stage/fonts"
cp /usr/share/fonts/opentype/ipaexfont-gothic/ipaexg.ttf /usr/share/fonts/opentype/ipaexfont-mincho/ipaexm.ttf \
    "$stage/fonts/"
awk '/^License: IPA-1$/ { n++; if (n == 2) { on = 1; next } }
     on && /^License: / { exit }
     on { sub(/^ /, ""); if ($0 == ".") $0 = ""; printf "%s\r\n", $0 }' \
    /usr/share/doc/fonts-ipaexfont-gothic/copyright >"$stage/fonts/IPA_Font_License_Agreement_v1.0.txt"
if [[ ! -s $stage/fonts/IPA_Font_License_Agreement_v1.0.txt ]]; then
    echo "package: the IPA Font License text was not found in the font package" >&2
    exit 1
fi

# Windows' Notepad and a person's eye both read the instructions in the code page of the forms.
sed 's/$/\r/' "$here/導入手順.txt" | iconv -f UTF-8 -t CP932 >"$stage/導入手順.txt"

# Zip with UTF-8 names flagged as such, so that Explorer shows the Japanese names correctly.
rm -f "$zip"
python3 - "$stage" "$zip" <<'PY'
import os, sys, zipfile
stage, out = sys.argv[1:]
with zipfile.ZipFile(out, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as z:
    for d, _, files in sorted(os.walk(stage)):
        for f in sorted(files):
            p = os.path.join(d, f)
            z.write(p, os.path.relpath(p, stage))
PY
files=$(find "$stage" -type f | wc -l)
echo "package: $zip ($(du -h "$zip" | cut -f1), $files files)"

# The installer: the same files, listed for it by name, so that its uninstaller removes exactly
# those. Layouts (SYS/*.wfd) go through the Layout macro, which leaves a suite's own layout alone.
setup=$root/dist/qelprn-$version-setup.exe
nsh=$build/package/files.nsh
python3 - "$stage" >"$nsh" <<'PY'
import os, sys
stage = sys.argv[1]
files = sorted(os.path.relpath(os.path.join(d, f), stage) for d, _, fs in os.walk(stage) for f in fs)
layouts = [f for f in files if os.path.dirname(f) == "SYS" and f.endswith(".wfd")]
plain = [f for f in files if f not in layouts]
win = lambda p: ("\\" + p.replace("/", "\\")) if p else ""
out = ["!macro InstallFiles"]
folder = None
for f in plain:
    if os.path.dirname(f) != folder:
        folder = os.path.dirname(f)
        out.append(f'    SetOutPath "$INSTDIR{win(folder)}"')
    out.append(f'    File "{stage}/{f}"')
out += [f'    !insertmacro Layout "{os.path.basename(f)}"' for f in layouts]
out += ["!macroend", "!macro UninstallFiles"]
out += [f'    Delete "$INSTDIR{win(f)}"' for f in plain]
out += [f'    !insertmacro Layout "{os.path.basename(f)}"' for f in layouts]
out += ["!macroend", "!macro RemoveFolders"]
folders = sorted({os.path.dirname(f) for f in files if os.path.dirname(f)}, key=lambda d: (-d.count("/"), d))
out += [f'    RMDir "$INSTDIR{win(d)}"' for d in folders]
out.append("!macroend")
print("\n".join(out))
PY
size_kb=$(du -sk "$stage" | cut -f1)
makensis -V2 -INPUTCHARSET UTF8 -DVERSION="$version" -DSTAGE="$stage" -DFILES="$nsh" -DSIZE_KB="$size_kb" \
    -DICON="$root/packaging/icons/qelprn.ico" -DOUTFILE="$setup" "$here/installer.nsi"
echo "package: $setup ($(du -h "$setup" | cut -f1))"
