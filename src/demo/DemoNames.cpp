#include "demo/DemoNames.h"

#include <QList>
#include <utility>

using namespace Qt::StringLiterals;

namespace qelprn::DemoNames {

namespace {

using Pair = std::pair<QString, QString>;

const QList<Pair>& families()
{
    static const QList<Pair> list = {
        {u"佐藤"_s, u"サトウ"_s},   {u"鈴木"_s, u"スズキ"_s},     {u"高橋"_s, u"タカハシ"_s},
        {u"田中"_s, u"タナカ"_s},   {u"伊藤"_s, u"イトウ"_s},     {u"渡辺"_s, u"ワタナベ"_s},
        {u"山本"_s, u"ヤマモト"_s}, {u"中村"_s, u"ナカムラ"_s},   {u"小林"_s, u"コバヤシ"_s},
        {u"加藤"_s, u"カトウ"_s},   {u"吉田"_s, u"ヨシダ"_s},     {u"山田"_s, u"ヤマダ"_s},
        {u"佐々木"_s, u"ササキ"_s}, {u"山口"_s, u"ヤマグチ"_s},   {u"松本"_s, u"マツモト"_s},
        {u"井上"_s, u"イノウエ"_s}, {u"木村"_s, u"キムラ"_s},     {u"林"_s, u"ハヤシ"_s},
        {u"斎藤"_s, u"サイトウ"_s}, {u"清水"_s, u"シミズ"_s},     {u"山崎"_s, u"ヤマザキ"_s},
        {u"森"_s, u"モリ"_s},       {u"池田"_s, u"イケダ"_s},     {u"橋本"_s, u"ハシモト"_s},
        {u"阿部"_s, u"アベ"_s},     {u"石川"_s, u"イシカワ"_s},   {u"前田"_s, u"マエダ"_s},
        {u"藤田"_s, u"フジタ"_s},   {u"小川"_s, u"オガワ"_s},     {u"岡田"_s, u"オカダ"_s},
        {u"後藤"_s, u"ゴトウ"_s},   {u"長谷川"_s, u"ハセガワ"_s}, {u"村上"_s, u"ムラカミ"_s},
        {u"近藤"_s, u"コンドウ"_s}, {u"石井"_s, u"イシイ"_s},     {u"坂本"_s, u"サカモト"_s},
        {u"遠藤"_s, u"エンドウ"_s}, {u"青木"_s, u"アオキ"_s},     {u"藤井"_s, u"フジイ"_s},
        {u"西村"_s, u"ニシムラ"_s}, {u"福田"_s, u"フクダ"_s},     {u"太田"_s, u"オオタ"_s},
        {u"三浦"_s, u"ミウラ"_s},   {u"藤原"_s, u"フジワラ"_s},   {u"岡本"_s, u"オカモト"_s},
        {u"松田"_s, u"マツダ"_s},   {u"中川"_s, u"ナカガワ"_s},   {u"髙木"_s, u"タカギ"_s},
        {u"原田"_s, u"ハラダ"_s},   {u"小野"_s, u"オノ"_s},       {u"竹内"_s, u"タケウチ"_s},
        {u"金子"_s, u"カネコ"_s},   {u"和田"_s, u"ワダ"_s},       {u"中山"_s, u"ナカヤマ"_s},
    };
    return list;
}

const QList<Pair>& womenNames()
{
    static const QList<Pair> list = {
        {u"ハル"_s, u"ハル"_s},   {u"千代"_s, u"チヨ"_s},     {u"久子"_s, u"ヒサコ"_s},
        {u"和子"_s, u"カズコ"_s}, {u"幸子"_s, u"サチコ"_s},   {u"節子"_s, u"セツコ"_s},
        {u"弘子"_s, u"ヒロコ"_s}, {u"京子"_s, u"キョウコ"_s}, {u"美智子"_s, u"ミチコ"_s},
        {u"洋子"_s, u"ヨウコ"_s}, {u"恵子"_s, u"ケイコ"_s},   {u"悦子"_s, u"エツコ"_s},
        {u"トシ"_s, u"トシ"_s},   {u"キヨ"_s, u"キヨ"_s},     {u"静江"_s, u"シズエ"_s},
        {u"文子"_s, u"フミコ"_s}, {u"光子"_s, u"ミツコ"_s},   {u"正子"_s, u"マサコ"_s},
    };
    return list;
}

const QList<Pair>& menNames()
{
    static const QList<Pair> list = {
        {u"清"_s, u"キヨシ"_s},     {u"茂"_s, u"シゲル"_s},     {u"勇"_s, u"イサム"_s},
        {u"博"_s, u"ヒロシ"_s},     {u"実"_s, u"ミノル"_s},     {u"進"_s, u"ススム"_s},
        {u"正雄"_s, u"マサオ"_s},   {u"和夫"_s, u"カズオ"_s},   {u"昭"_s, u"アキラ"_s},
        {u"武"_s, u"タケシ"_s},     {u"一郎"_s, u"イチロウ"_s}, {u"義男"_s, u"ヨシオ"_s},
        {u"健一"_s, u"ケンイチ"_s}, {u"隆"_s, u"タカシ"_s},     {u"豊"_s, u"ユタカ"_s},
        {u"修"_s, u"オサム"_s},     {u"勝"_s, u"マサル"_s},     {u"三郎"_s, u"サブロウ"_s},
    };
    return list;
}

const QList<Pair>& facilityWords()
{
    static const QList<Pair> list = {
        {u"さくら"_s, u"サクラ"_s},     {u"ひまわり"_s, u"ヒマワリ"_s},
        {u"あおば"_s, u"アオバ"_s},     {u"みどりの丘"_s, u"ミドリノオカ"_s},
        {u"やすらぎ"_s, u"ヤスラギ"_s}, {u"寿"_s, u"コトブキ"_s},
        {u"陽だまり"_s, u"ヒダマリ"_s}, {u"けやき"_s, u"ケヤキ"_s},
        {u"若葉"_s, u"ワカバ"_s},       {u"あすなろ"_s, u"アスナロ"_s},
        {u"清風"_s, u"セイフウ"_s},     {u"光風園"_s, u"コウフウエン"_s},
        {u"なごみ"_s, u"ナゴミ"_s},     {u"はなみずき"_s, u"ハナミズキ"_s},
        {u"松風"_s, u"マツカゼ"_s},     {u"ゆうあい"_s, u"ユウアイ"_s},
        {u"桜川"_s, u"サクラガワ"_s},   {u"すみれ"_s, u"スミレ"_s},
    };
    return list;
}

struct Town
{
    QString yubinPrefix;
    QString address;
    QString kana;
    QString tel;
};

const QList<Town>& towns()
{
    static const QList<Town> list = {
        {u"167"_s, u"東京都杉並区荻窪"_s, u"トウキョウトスギナミクオギクボ"_s, u"03"_s},
        {u"179"_s, u"東京都練馬区光が丘"_s, u"トウキョウトネリマクヒカリガオカ"_s, u"03"_s},
        {u"181"_s, u"東京都三鷹市下連雀"_s, u"トウキョウトミタカシシモレンジャク"_s, u"0422"_s},
        {u"183"_s, u"東京都府中市宮町"_s, u"トウキョウトフチュウシミヤマチ"_s, u"042"_s},
        {u"192"_s, u"東京都八王子市明神町"_s, u"トウキョウトハチオウジシミョウジンチョウ"_s, u"042"_s},
        {u"206"_s, u"東京都多摩市関戸"_s, u"トウキョウトタマシセキド"_s, u"042"_s},
        {u"214"_s, u"神奈川県川崎市多摩区登戸"_s, u"カナガワケンカワサキシタマクノボリト"_s, u"044"_s},
        {u"226"_s, u"神奈川県横浜市緑区中山"_s, u"カナガワケンヨコハマシミドリクナカヤマ"_s, u"045"_s},
        {u"330"_s, u"埼玉県さいたま市浦和区高砂"_s, u"サイタマケンサイタマシウラワクタカサゴ"_s, u"048"_s},
        {u"273"_s, u"千葉県船橋市本町"_s, u"チバケンフナバシシホンチョウ"_s, u"047"_s},
    };
    return list;
}

QString digits(DemoRandom& rng, int count)
{
    QString text;
    for (int i = 0; i < count; ++i)
        text += QChar(u'0' + rng.between(0, 9));
    return text;
}

} // namespace

DemoName person(DemoRandom& rng, bool female)
{
    const Pair& family = rng.pick(families());
    const Pair& given = rng.pick(female ? womenNames() : menNames());
    return {family.first + u"　"_s + given.first, family.second + u"　"_s + given.second};
}

DemoName facility(DemoRandom& rng, const QString& kind)
{
    // Facility names put the word of the kind after the house name, as homes usually do; the
    // nursing homes put it first.
    struct Suffix
    {
        QString kind, word, kana;
        bool first;
    };
    static const QList<Suffix> suffixes = {
        {u"特別養護老人ホーム"_s, u"特別養護老人ホーム"_s, u"トクベツヨウゴロウジンホーム"_s, true},
        {u"介護老人保健施設"_s, u"介護老人保健施設"_s, u"カイゴロウジンホケンシセツ"_s, true},
        {u"有料老人ホーム"_s, u"ホーム"_s, u"ホーム"_s, false},
        {u"グループホーム"_s, u"グループホーム"_s, u"グループホーム"_s, false},
        {u"サービス付き高齢者向け住宅"_s, u"レジデンス"_s, u"レジデンス"_s, false},
    };
    Suffix suffix{kind, u"ケアハウス"_s, u"ケアハウス"_s, false};
    for (const Suffix& s : suffixes) {
        if (s.kind == kind)
            suffix = s;
    }
    const Pair& word = rng.pick(facilityWords());
    if (suffix.first)
        return {suffix.word + u"　"_s + word.first, suffix.kana + u" "_s + word.second};
    return {word.first + u"　"_s + suffix.word, word.second + u" "_s + suffix.kana};
}

DemoName houseWord(DemoRandom& rng)
{
    const Pair& word = rng.pick(facilityWords());
    return {word.first, word.second};
}

DemoAddress address(DemoRandom& rng)
{
    const Town& town = rng.pick(towns());
    DemoAddress a;
    a.yubinNo = town.yubinPrefix + u"-"_s + digits(rng, 4);
    const int chome = rng.between(1, 5);
    a.address1 = town.address + QString::number(chome) + u"丁目"_s;
    a.address2 =
        QString::number(rng.between(1, 30)) + u"番"_s + QString::number(rng.between(1, 20)) + u"号"_s;
    a.kana = town.kana;
    const int localDigits = 10 - int(town.tel.size());
    const QString local = digits(rng, localDigits);
    const int split = localDigits - 4;
    a.telNo = town.tel + u"-"_s + local.left(split) + u"-"_s + local.mid(split);
    a.faxNo = town.tel + u"-"_s + local.left(split) + u"-"_s + digits(rng, 4);
    return a;
}

QString doctorInstitution(DemoRandom& rng)
{
    static const QList<QString> list = {u"あおば内科クリニック"_s, u"さくら整形外科医院"_s,
                                        u"みどり総合病院"_s, u"中央リハビリテーション病院"_s,
                                        u"けやき在宅診療所"_s};
    return rng.pick(list);
}

QString disease(DemoRandom& rng)
{
    static const QList<QString> list = {u"脳梗塞後遺症"_s,   u"変形性膝関節症"_s, u"腰部脊柱管狭窄症"_s,
                                        u"パーキンソン病"_s, u"廃用症候群"_s,     u"頸椎症"_s,
                                        u"関節リウマチ"_s,   u"腰痛症"_s};
    return rng.pick(list);
}

} // namespace qelprn::DemoNames
