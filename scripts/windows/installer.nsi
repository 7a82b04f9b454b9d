; The Windows installer: puts the programs into the suite's program folder (the folder holding
; "Tovara.ini"), adds the Start-menu shortcut and the entry in Windows' list of installed programs,
; and writes an uninstaller that removes exactly what was installed.
;
; Built by package.sh:  makensis -INPUTCHARSET UTF8 -DVERSION=x.y.z -DSTAGE=<folder> -DFILES=<nsh>
;                        -DICON=<ico> -DOUTFILE=<exe> installer.nsi
; FILES is written by package.sh from the staged folder: the macros InstallFiles, UninstallFiles
; and RemoveFolders, and a "!insertmacro Layout <name>" line per layout.
;
; Silent:  qelprn-<version>-setup.exe /S /D=C:\path\to\suite       (/D= last, no quotes)
;          add /DEMO before /D= to allow a folder without "Tovara.ini" (writes the demo into it).
;          Exit code 0 done, 2 refused or failed.
; Uninstall silently:  "<folder>\qelprn-uninstall.exe" /S

Unicode true
Target amd64-unicode
ManifestDPIAware true
RequestExecutionLevel admin
SetCompressor /SOLID lzma

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh

!define PRODUCT "施設請求書印刷"
!define PUBLISHER "qelprn maintainers"
!define REGKEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\qelprn"
; The layouts this installer wrote (a layout the suite already had is neither replaced nor removed).
!define LAYOUTKEY "Software\qelprn\InstalledLayouts"
!define UNINSTALLER "qelprn-uninstall.exe"
!define SHORTCUT "$SMPROGRAMS\${PRODUCT}.lnk"

Name "${PRODUCT} ${VERSION}"
OutFile "${OUTFILE}"
InstallDir "$PROGRAMFILES64\qelprn"
; An update goes where the installed version is.
InstallDirRegKey HKLM "${REGKEY}" "InstallLocation"
BrandingText "${PRODUCT} ${VERSION}"
ShowInstDetails show
ShowUninstDetails show

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey /LANG=1041 "ProductName" "${PRODUCT}"
VIAddVersionKey /LANG=1041 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=1041 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1041 "FileDescription" "${PRODUCT} インストーラー"
VIAddVersionKey /LANG=1041 "CompanyName" "${PUBLISHER}"
VIAddVersionKey /LANG=1041 "LegalCopyright" "2026 the qelprn authors"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING

!define MUI_WELCOMEPAGE_TITLE "${PRODUCT} ${VERSION} のセットアップ"
!define MUI_WELCOMEPAGE_TEXT "${PRODUCT} を、スイートのプログラムフォルダー（$\"Tovara.ini$\" があるフォルダー）に導入します。$\r$\n$\r$\n前の版が入っているときは、その版のファイルを新しい版に置き換えます。スイートの設定ファイル、データベース、データのフォルダーには触れません。$\r$\n$\r$\n導入の前に、${PRODUCT} を閉じてください。"
!insertmacro MUI_PAGE_WELCOME
!define MUI_PAGE_HEADER_TEXT "導入先の選択"
!define MUI_PAGE_HEADER_SUBTEXT "${PRODUCT} を入れるスイートのプログラムフォルダーを選んでください。"
!define MUI_DIRECTORYPAGE_TEXT_TOP "スイートのプログラムフォルダー（$\"Tovara.ini$\" と $\"adodb.ini$\" があるフォルダー）を選んでください。"
!define MUI_DIRECTORYPAGE_TEXT_DESTINATION "スイートのプログラムフォルダー"
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE CheckSuiteFolder
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_TEXT "${PRODUCT} を導入しました。$\r$\n$\r$\nスタートメニューの「${PRODUCT}」、またはスイートのメニューから起動できます。"
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\導入手順.txt"
!define MUI_FINISHPAGE_SHOWREADME_TEXT "導入手順.txt を開く"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
!insertmacro MUI_PAGE_FINISH

!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES

!insertmacro MUI_LANGUAGE "Japanese"

Var Demo

; A layout is written only where the folder has none of that name, and then recorded; the
; uninstaller removes only recorded ones. A layout the folder already has is the suite's: a record
; of that name, left by an install into a folder that is gone, is dropped so that it is never removed.
!macro Layout name
    !ifdef INSTALLING
        ${IfNot} ${FileExists} "$INSTDIR\SYS\${name}"
            SetOutPath "$INSTDIR\SYS"
            File "${STAGE}/SYS/${name}"
            WriteRegDWORD HKLM "${LAYOUTKEY}" "${name}" 1
        ${Else}
            DeleteRegValue HKLM "${LAYOUTKEY}" "${name}"
        ${EndIf}
    !else
        ClearErrors
        ReadRegDWORD $0 HKLM "${LAYOUTKEY}" "${name}"
        ${If} $0 == 1
            Delete "$INSTDIR\SYS\${name}"
        ${EndIf}
    !endif
!macroend

!include "${FILES}"

Function .onInit
    ${GetParameters} $R0
    ClearErrors
    ${GetOptions} $R0 "/DEMO" $R1
    ${IfNot} ${Errors}
        StrCpy $Demo 1
    ${Else}
        StrCpy $Demo 0
    ${EndIf}
    ; Silent: no one to ask, so a folder without "Tovara.ini" is refused unless /DEMO allows it.
    ${If} ${Silent}
    ${AndIfNot} ${FileExists} "$INSTDIR\Tovara.ini"
    ${AndIf} $Demo != 1
        SetErrorLevel 2
        Abort
    ${EndIf}
FunctionEnd

Function CheckSuiteFolder
    StrCpy $Demo 0
    ${If} ${FileExists} "$INSTDIR\Tovara.ini"
        Return
    ${EndIf}
    MessageBox MB_YESNO|MB_ICONEXCLAMATION|MB_DEFBUTTON2 "「$INSTDIR」には $\"Tovara.ini$\" がありません。スイートのプログラムフォルダーではないようです。$\r$\n$\r$\nスイートのプログラムフォルダーを選び直すときは「いいえ」を押してください。$\r$\n$\r$\nスイートなしで試すために、このフォルダーにデモ用のデータ（設定ファイルとデータベース）を作って導入するときは「はい」を押してください。" IDYES demo
    Abort
demo:
    StrCpy $Demo 1
FunctionEnd

; An installed version, here or elsewhere, is removed by its own uninstaller first: an update then
; leaves exactly the new version's files, and the list of installed programs holds one entry.
Function RemovePreviousVersion
    ReadRegStr $R0 HKLM "${REGKEY}" "InstallLocation"
    ${If} $R0 != ""
    ${AndIf} ${FileExists} "$R0\${UNINSTALLER}"
        DetailPrint "前の版を取り除いています: $R0"
        ; _?= runs it in place, so ExecWait waits for it; it then leaves itself, which goes next.
        ExecWait '"$R0\${UNINSTALLER}" /S _?=$R0' $R1
        Delete "$R0\${UNINSTALLER}"
        RMDir "$R0"
    ${EndIf}
FunctionEnd

Section "Install"
    SetShellVarContext all
    Call RemovePreviousVersion

    SetOutPath "$INSTDIR"
    !define INSTALLING
    !insertmacro InstallFiles
    !undef INSTALLING
    WriteUninstaller "$INSTDIR\${UNINSTALLER}"

    ${If} $Demo == 1
    ${AndIfNot} ${FileExists} "$INSTDIR\Tovara.ini"
        DetailPrint "デモ用のデータを作っています"
        nsExec::ExecToLog '"$INSTDIR\qelprn-cli.exe" init-demo "$INSTDIR" --replace'
        Pop $0
        ${If} $0 != 0
            MessageBox MB_OK|MB_ICONSTOP "デモ用のデータを作れませんでした（終了コード $0）。" /SD IDOK
            SetErrorLevel 2
        ${EndIf}
    ${EndIf}

    ; As the suite's menu starts it: with an argument, in the program folder.
    SetOutPath "$INSTDIR"
    CreateShortCut "${SHORTCUT}" "$INSTDIR\qelprn.exe" "1" "$INSTDIR\qelprn.exe" 0

    WriteRegStr HKLM "${REGKEY}" "DisplayName" "${PRODUCT}"
    WriteRegStr HKLM "${REGKEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKLM "${REGKEY}" "Publisher" "${PUBLISHER}"
    WriteRegStr HKLM "${REGKEY}" "DisplayIcon" "$INSTDIR\qelprn.exe,0"
    WriteRegStr HKLM "${REGKEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${REGKEY}" "UninstallString" '"$INSTDIR\${UNINSTALLER}"'
    WriteRegStr HKLM "${REGKEY}" "QuietUninstallString" '"$INSTDIR\${UNINSTALLER}" /S'
    WriteRegDWORD HKLM "${REGKEY}" "NoModify" 1
    WriteRegDWORD HKLM "${REGKEY}" "NoRepair" 1
    WriteRegDWORD HKLM "${REGKEY}" "EstimatedSize" ${SIZE_KB}
SectionEnd

Function un.onInit
    SetShellVarContext all
FunctionEnd

Section "Uninstall"
    SetShellVarContext all
    !insertmacro UninstallFiles
    Delete "${SHORTCUT}"
    DeleteRegKey HKLM "${LAYOUTKEY}"
    DeleteRegKey /ifempty HKLM "Software\qelprn"
    DeleteRegKey HKLM "${REGKEY}"
    Delete "$INSTDIR\${UNINSTALLER}"
    ; Folders only when empty: the suite's own SYS, and anything the clerk put in ours, stay.
    !insertmacro RemoveFolders
    RMDir "$INSTDIR"
SectionEnd
