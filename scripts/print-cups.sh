#!/usr/bin/env bash
# Prints for real: installs CUPS and the CUPS PDF printer driver from Debian when they are missing,
# starts a private cupsd (its own folders and socket, nothing of the system's CUPS is used), adds a
# PDF queue as its default printer, runs qelprn-engine with "PrintOut" on a facility invoice of 30
# rows (two pages) and checks that the queue wrote a PDF with two pages.
#
# Usage: scripts/print-cups.sh [ENGINE]   (default: build/test/bin/qelprn-engine, built when missing)
# Exit status: 0 printed and checked, 1 the check failed, 77 cupsd cannot run here (skipped).
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
engine=${1:-build/test/bin/qelprn-engine}

need=()
for p in cups printer-driver-cups-pdf poppler-utils; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || need+=("$p")
done
if ((${#need[@]})); then
    sudo_cmd=()
    [[ $(id -u) -ne 0 ]] && sudo_cmd=(sudo)
    echo "Installing: ${need[*]}" >&2
    "${sudo_cmd[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${need[@]}"
fi
if [[ ! -x $engine ]]; then
    build=$(dirname "$(dirname "$engine")")
    cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug >/dev/null
    cmake --build "$build" --target qelprn-engine
fi
engine=$(readlink -f "$engine")

work=$(mktemp -d /tmp/qelprn-cups.XXXXXX)
chmod 755 "$work"
queue=QelprnPDF
pdfconf=/etc/cups/cups-pdf-qelprn.conf
cupsd_pid=
cleanup() {
    [[ -n $cupsd_pid ]] && kill "$cupsd_pid" 2>/dev/null && wait "$cupsd_pid" 2>/dev/null
    rm -f "$pdfconf"
    rm -rf "$work"
}
trap cleanup EXIT
trap 'echo "print-cups: failed at line $LINENO" >&2' ERR

mkdir -p "$work"/{etc/ppd,spool/tmp,cache,state,log,out}
chmod 1777 "$work/out"
cat >"$work/etc/cupsd.conf" <<CONF
Listen $work/cups.sock
LogLevel warn
WebInterface No
Browsing No
DefaultAuthType None
<Location />
  Order allow,deny
  Allow all
</Location>
<Policy default>
  <Limit All>
    Order deny,allow
  </Limit>
</Policy>
CONF
cat >"$work/etc/cups-files.conf" <<CONF
ServerRoot $work/etc
RequestRoot $work/spool
TempDir $work/spool/tmp
CacheDir $work/cache
StateDir $work/state
ErrorLog $work/log/error_log
AccessLog $work/log/access_log
PageLog $work/log/page_log
DataDir /usr/share/cups
ServerBin /usr/lib/cups
Group lp
SystemGroup root
CONF
# The cups-pdf backend reads cups-pdf-<name>.conf for the device URI cups-pdf:/<name>.
cat >"$pdfconf" <<CONF
Out $work/out
AnonDirName $work/out
Label 0
TitlePref 0
UserUMask 0000
CONF

cupsd -f -c "$work/etc/cupsd.conf" -s "$work/etc/cups-files.conf" &
cupsd_pid=$!
export CUPS_SERVER=$work/cups.sock
running() { lpstat -r 2>/dev/null | grep -q 'is running'; }
for _ in $(seq 50); do
    running && break
    sleep 0.2
done
if ! running; then
    echo "print-cups: cupsd does not start here; see $work/log/error_log" >&2
    cat "$work/log/error_log" >&2 || true
    exit 77
fi
model=$(lpinfo -m 2>/dev/null | awk '/CUPS-PDF/ {print $1; exit}' || true)
lpadmin -p "$queue" -E -v cups-pdf:/qelprn -m "${model:-lsb/usr/cups-pdf/CUPS-PDF_opt.ppd}"
lpadmin -d "$queue"
echo "print-cups: default printer $(lpstat -d)"

# A facility invoice of 30 rows for one billing facility: 25 rows a page, two pages.
python3 - "$work" <<'PY'
import sys
work = sys.argv[1]
titles = ("枠線描画,項番,施術年月,提出年月,請求先施設ID,請求先施設名,請求先郵便番号,請求先住所1,請求先住所2,本社名,"
          "本社郵便番号,本社住所,診療タイプ,治療院名,治療院郵便番号,治療院住所,施術施設名,施術施設人数,施術施設合計,"
          "施術施設負担額,備考,社印保存先").split(",")
q = lambda s: '"' + s + '"'
lines = [",".join(q(t) for t in titles)]
for i in range(1, 31):
    lines.append(",".join([q("1"), str(i), q("2024/05/01"), q("2024/06/05"), "12", q("特別養護老人ホーム さくら苑"),
                           q("166-0001"), q("東京都杉並区阿佐谷北1-2-3"), q(""), q("株式会社ほほえみ"), q("160-0022"),
                           q("東京都新宿区新宿1-1-1"), "0", q("ほほえみ鍼灸院"), q("167-0051"), q("東京都杉並区荻窪5-6-7"),
                           q("さくら苑 %d号館" % i), "3", "30000", "3000", q(""), q("")]))
open(work + "/施設請求データ.csv", "wb").write(("\r\n".join(lines) + "\r\n").encode("cp932"))
PY
printf 'FileName,"%s"\r\nTitle,"施設請求書印刷"\r\nSetDataText,"施設請求データ","施設請求データ.csv"\r\nPrintOut\r\n' \
    "$root/layouts/施設別請求書.wfd" | iconv -f UTF-8 -t CP932 >"$work/WfdCom.dat"

QT_QPA_PLATFORM=offscreen "$engine" /c "$work/WfdCom.dat"
echo "print-cups: job sent"
pdf=
for _ in $(seq 150); do
    pdf=$(find "$work/out" -name '*.pdf' -size +0 2>/dev/null | head -n 1)
    [[ -n $pdf ]] && ! lpstat -o 2>/dev/null | grep -q . && break
    sleep 0.2
done
if [[ -z $pdf ]]; then
    echo "print-cups: the queue wrote no PDF" >&2
    cat "$work/log/error_log" >&2 || true
    exit 1
fi
pages=$(pdfinfo "$pdf" | awk '/^Pages:/ {print $2}')
echo "print-cups: $pdf has $pages pages"
if [[ $pages != 2 ]]; then
    echo "print-cups: expected 2 pages" >&2
    exit 1
fi
# CUPS-PDF distills the job again through Ghostscript into Type 3 fonts, so its text cannot be read
# back; the paper size tells that the form arrived as laid out.
pdfinfo "$pdf" | grep -q 'Page size: *595' || { echo "print-cups: the pages are not A4" >&2; exit 1; }
echo "print-cups: OK"
