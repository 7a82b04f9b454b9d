#!/usr/bin/env bash
# Installs the newest dist/qelprn_*_amd64.deb with apt on this machine, uses the installed programs
# as a user would (version, demo folder in a fresh HOME, a PDF with the default engine), purges the
# package and lists what it left behind: every file the package installed must be gone, and the
# user's program folder must still be there. Needs root (or sudo).
set -euo pipefail
cd "$(dirname "$0")/.."

deb=$(ls -t dist/qelprn_*_amd64.deb 2>/dev/null | head -1 || true)
[[ -n "$deb" ]] || deb=$(scripts/package-deb.sh | tail -1)
sudo_cmd=()
if [[ $(id -u) -ne 0 ]]; then sudo_cmd=(sudo); fi
export DEBIAN_FRONTEND=noninteractive

echo "== apt install ./$deb"
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "./$deb" >/dev/null
files=$(dpkg -L qelprn)

home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
export HOME=$home QT_QPA_PLATFORM=offscreen
unset QELPRN_APP_DIR
qelprn --version
qelprn-cli --version
qelprn-engine --version
status=0
qelprn-cli sites >/dev/null 2>"$home/missing.txt" || status=$?
[[ $status -eq 2 ]] || { echo "no program folder: exit $status, expected 2" >&2; exit 1; }
folder="$home/.local/share/qelprn"
qelprn-cli init-demo "$folder" --patients 30 --month 2026/10 >/dev/null
sed -i '/^FORM_ENGINE=/d' "$folder/Tovara.ini"
qelprn-cli print --kind 1 --month 2026/10 --pdf "$home/invoice.pdf" --yes >/dev/null
head -c 4 "$home/invoice.pdf" | grep -q '%PDF'
QELPRN_QUIT_WHEN_READY=1 qelprn 1 | grep -q '^startup-ms '
echo "installed programs: version, demo folder, PDF with the default engine, desktop start: ok"

echo "== apt purge qelprn"
"${sudo_cmd[@]}" apt-get purge -y -qq qelprn >/dev/null
left=()
while IFS= read -r f; do
    # Every file, and the folders that are the package's own (shared ones such as /usr/bin stay).
    if [[ -f "$f" || -L "$f" ]] || [[ -d "$f" && $(basename "$f") == qelprn* ]]; then left+=("$f"); fi
done <<<"$files"
if dpkg-query -W -f='${Status}' qelprn 2>/dev/null | grep -q installed; then left+=("(package still registered)"); fi
echo "left after the purge: ${#left[@]}"
if ((${#left[@]})); then printf '  %s\n' "${left[@]}"; fi
[[ -f "$folder/Tovara.ini" ]] && echo "the user's program folder is kept: $folder"
((${#left[@]} == 0))
