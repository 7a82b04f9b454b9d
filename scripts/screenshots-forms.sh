#!/usr/bin/env bash
# Renders the first page of every form into docs/forms-*.png for the README: sample print data in
# the writers' format (CP932, CR LF) is filled into each layout by qelprn-engine.
#
# Usage: scripts/screenshots-forms.sh [BUILD_DIR]   (default build/test; qelprn-engine is built
# when missing, and the company seal is taken from a demo folder when qelprn-cli is built)
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
build=${1:-build/test}
if [[ ! -x $build/bin/qelprn-engine ]]; then
    cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug >/dev/null
    cmake --build "$build" --target qelprn-engine
fi
engine=$(readlink -f "$build/bin/qelprn-engine")
work=$(mktemp -d /tmp/qelprn-shots.XXXXXX)
trap 'rm -rf "$work"' EXIT
export QT_QPA_PLATFORM=offscreen

seal=""
if [[ -x $build/bin/qelprn-cli ]] && "$build/bin/qelprn-cli" init-demo "$work/demo" --patients 0 >/dev/null 2>&1; then
    seal=$work/demo/DATA/corpseal.bmp
fi

python3 - "$work" "$seal" <<'PY'
import sys
work, seal = sys.argv[1], sys.argv[2]
q = lambda s: '"' + s + '"'
def write(name, titles, rows):
    lines = [",".join(q(t) for t in titles)] + [",".join(r) for r in rows]
    open(work + "/" + name, "wb").write(("\r\n".join(lines) + "\r\n").encode("cp932"))

names = ["佐藤 花子", "鈴木 一郎", "高橋 幸子", "田中 茂", "伊藤 和子", "渡辺 博", "山本 節子", "中村 清"]
facility = ("枠線描画,項番,施術年月,提出年月,請求先施設ID,請求先施設名,請求先郵便番号,請求先住所1,請求先住所2,本社名,"
            "本社郵便番号,本社住所,診療タイプ,治療院名,治療院郵便番号,治療院住所,施術施設名,施術施設人数,施術施設合計,"
            "施術施設負担額,備考,社印保存先").split(",")
def frow(no, typ, treated, people, total, share, remark):
    return [q("1"), str(no), q("2024/05/01"), q("2024/06/05"), "12", q("社会福祉法人 さくら会"), q("166-0001"),
            q("東京都杉並区阿佐谷北1-2-3"), q("さくら会本部ビル2F"), q("株式会社ほほえみケア"), q("160-0022"),
            q("東京都新宿区新宿1-1-1"), str(typ), q("ほほえみ鍼灸マッサージ院"), q("167-0051"),
            q("東京都杉並区荻窪5-6-7"), q(treated), str(people), str(total), str(share), q(remark), q(seal)]
rows = [frow(1, 0, "特別養護老人ホーム さくら苑", 18, 1523400, 152340, ""),
        frow(2, 0, "グループホーム さくら", 9, 684000, 68400, ""),
        frow(3, 0, "ケアハウス さくら", 6, 395700, 79140, ""),
        frow(4, -1, "", 0, 0, 0, ""), frow(5, -1, "", 0, 0, 0, ""),
        frow(6, 1, "特別養護老人ホーム さくら苑(自費)", 0, 0, 12000, "佐藤 花子 様"),
        frow(7, 1, "グループホーム さくら(自費)", 0, 0, 8000, "渡辺 博 様")]
rows += [frow(n, -1, "", 0, 0, 0, "") for n in range(8, 26)]
write("facility.csv", facility, rows)

patient = ("枠線描画,項番,施術年月,提出年月,施術日From,施術日To,施設ID,施設名,治療院名,部屋番号,利用者ID,利用者名,"
           "診療タイプ,施術回数,保険総合計,利用者負担割合,利用者請求額,保険有無,利用者請求額4回以下,利用者請求額5回以上,"
           "保険略名,保険自己負担額,自由診療額,治療院郵便番号,治療院住所,治療院電話番号,治療院FAX番号,治療院金融機関,"
           "治療院預金種別,治療院口座番号,治療院名義人,施設支払方法,社印保存先").split(",")
rows = []
for i, name in enumerate(names):
    count = 4 + i % 6
    total = 5700 * count
    share = 2 + i % 3  # the share code: tenths plus one (1割 to 3割)
    billed = total * (share - 1) // 10
    low = billed * min(count, 4) // count
    rows.append([q("1"), str(i + 1), q("2024/05/01"), q("2024/06/05"), q("2024/05/01"), q("2024/05/31"), "3",
                 q("介護付き有料老人ホーム あおば"), q("ほほえみ鍼灸マッサージ院"), str(101 + i), str(5001 + i), q(name),
                 "0", str(count), str(total), str(share), str(billed), "1", str(low), str(billed - low),
                 q(["後期高齢", "国保", "社保"][i % 3]), str(billed), "0", q("167-0051"), q("東京都杉並区荻窪5-6-7"),
                 q("03-1234-5678"), q("03-1234-5679"), q("みずほ銀行 荻窪支店"), q("普通預金"), q("1234567"),
                 q("カ）ホホエミケア"), "1", q(seal)])
write("patients.csv", patient, rows)

receipt = "枠線描画,施術年月,提出年月,施術日From,施術日To,利用者ID,利用者名,保険種別,負担割合,施術回数".split(",")
for n in range(1, 12):
    receipt += ["施術日%d" % n, "保険内金額%d" % n, "一部負担金%d" % n, "自費金額%d" % n]
receipt += ("保険内金額合計,一部負担金合計,自費合計,備考_部位,備考_変形,備考_鍼灸,備考_往療,備考_日別施術内容,請求元〒,"
            "請求元住所,請求元社名,請求元屋号,請求元電話番号,請求元FAX番号,保険略名,社印保存先").split(",")
def receipt_row(days, copay, selfpay):
    # A 3割 patient: 4,555 yen of treatment a day is a co-payment of 1366.5 in the print data, which
    # the form bills as 1,367.
    r = [q("1"), q("2024/05/01"), q("2024/06/05"), q("2024/05/01"), q("2024/05/31"), "5001", q("佐藤 花子"), "1",
         "4", str(len(days))]
    for n in range(11):
        if n < len(days):
            d = days[n]
            r += [q("2024/05/%02d" % d), "4555" if d in copay else "0", "1366.5" if d in copay else "0",
                  "1000" if d in selfpay else "0"]
        else:
            r += [q(""), "0", "0", "0"]
    r += [str(4555 * len(copay & set(days))), str(1366.5 * len(copay & set(days))).rstrip("0").rstrip("."),
          str(1000 * len(selfpay & set(days))), q("マッサージ 5部位"), q("徒手矯正"), q(""), q("往療料加算"),
          q("5/2 マッサージ、温あんあり、電気なし"), q("167-0051"), q("東京都杉並区荻窪5-6-7"), q("株式会社ほほえみケア"),
          q("ほほえみ鍼灸マッサージ院"), q("03-1234-5678"), q("03-1234-5679"), q("後期高齢"), q(seal)]
    return r

# The co-payment days go on the invoice-receipt, the self-pay days on the self-pay receipt, as the
# print run selects them; the 16th and 23rd have both.
copay = {2, 6, 9, 13, 16, 20, 23, 27}
selfpay = {11, 16, 23, 30}
write("receipt.csv", receipt, [receipt_row(sorted(copay), copay, selfpay)])
write("receipt-selfpay.csv", receipt, [receipt_row(sorted(selfpay), copay, selfpay)])
PY

mkdir -p docs
render() { # name layout data-name csv
    printf 'FileName,"%s"\r\nTitle,"施設請求書印刷"\r\nSetDataText,"%s","%s"\r\nShowWindow,2\r\n' \
        "$root/layouts/$2" "$3" "$4" | iconv -f UTF-8 -t CP932 >"$work/$1.dat"
    "$engine" --png "$work/$1" --dpi 110 /c "$work/$1.dat"
    cp "$work/$1/page-0001.png" "docs/forms-$1.png"
    echo "docs/forms-$1.png"
}
render facility-invoice 施設別請求書.wfd 施設請求データ facility.csv
render copayment-list 一部負担金一覧表_02.wfd 施設請求データ patients.csv
render copayment-list-visits 一部負担金一覧表_回数区分あり.wfd 施設請求データ patients.csv
render invoice-receipt 請求書兼領収書_回数区分あり.wfd 請求書兼領収書 receipt.csv
render invoice-receipt-selfpay 請求書兼領収書_回数区分あり_自費.wfd 請求書兼領収書 receipt-selfpay.csv
