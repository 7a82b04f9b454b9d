#include "forms/ProgramFolderSetup.h"

#include "app/Paths.h"
#include "app/ProgramTitle.h"
#include "demo/DemoProgramFolder.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace qelprn {

QString chooseProgramFolder(Interaction& ui)
{
    const AppDirLookup lookup = findAppDir();
    if (!lookup.found.isEmpty())
        return lookup.found;

    const QString folder = lookup.suggested();
    const QString question = lookup.describeMissing() + u"\n\n"_s + QDir::toNativeSeparators(folder) +
                             u" に、お試し用のデモ プログラムフォルダ（設定ファイル、帳票レイアウト、"
                             u"見本のデータ）を作成しますか？"_s;
    if (ui.messageBox(question, seikyuTitle(), MsgIcon::Question, MsgButtons::YesNo) != MsgResult::Yes)
        return {};

    DemoOptions options;
    options.folder = folder;
    // No FORM_ENGINE: the engine installed beside the program is used.
    DemoProgramFolder demo(options);
    QString error;
    bool written = false;
    {
        BusyPointer busy(ui);
        written = demo.create(ui, &error);
    }
    if (!written) {
        ui.messageBox(u"デモ プログラムフォルダを作成できません。\r\n"_s +
                          (error.isEmpty() ? QDir::toNativeSeparators(folder) : error),
                      seikyuTitle(), MsgIcon::Critical);
        return {};
    }
    return folder;
}

} // namespace qelprn
