; Quarn's installer, for one user: it needs no administrator, and goes where that user can write, as Quarn
; keeps its settings and lists beside its program.
;
; Made by make-packages, which defines
;   VERSION    of the program, three numbers
;   FILES      the folder that holds what is installed
;   LISTS      the folder of wait.nsh, install.nsh and uninstall.nsh, which name those files one by one
;   SIZE_KB    what FILES takes
;   ICON       the program's icon
;   SIDE       the picture beside the first and the last page
;   OUTPUT     the installer to write
;   SIGN       a program that signs the executable file that it is given; may be missing
;
; Games.ini, countryip.dat and Quarn.ini are Quarn's as long as nobody has touched them: they count as untouched
; while their time is the one that was noted when they were installed. Once edited they are the user's, and stay.
; Quarn.ini is part of a first installation only.

Target amd64-unicode
SetCompressor /SOLID lzma

!include MUI2.nsh
!include LogicLib.nsh

!define PUBLISHER "The Quarn developers"
!define ENTRY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quarn"
!define SHORTCUT "$SMPROGRAMS\Quarn.lnk"

Name Quarn
OutFile "${OUTPUT}"
!ifdef SIGN
    !finalize '"${SIGN}" "%1"' = 0
    !uninstfinalize '"${SIGN}" "%1"' = 0
!endif
InstallDir $LOCALAPPDATA\Programs\Quarn
InstallDirRegKey HKCU "${ENTRY}" InstallLocation
RequestExecutionLevel user
ManifestDPIAware true
BrandingText "Quarn ${VERSION}"

VIProductVersion ${VERSION}.0
VIAddVersionKey CompanyName "${PUBLISHER}"
VIAddVersionKey FileDescription "Quarn - Setup"
VIAddVersionKey FileVersion ${VERSION}
VIAddVersionKey LegalCopyright "${PUBLISHER}"
VIAddVersionKey ProductName Quarn
VIAddVersionKey ProductVersion ${VERSION}

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${SIDE}"
!define MUI_ABORTWARNING

!define MUI_WELCOMEPAGE_TITLE "Quarn ${VERSION}"
!define MUI_WELCOMEPAGE_TEXT "Quarn is a server browser for online games.$\r$\n$\r$\nIt will be installed for your user account only. An older version is replaced. Your settings, your server lists and your changes to Games.ini are kept."
!insertmacro MUI_PAGE_WELCOME
!define MUI_PAGE_CUSTOMFUNCTION_PRE PassOverWhenInstalled
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN $INSTDIR\Quarn.exe
!insertmacro MUI_PAGE_FINISH

!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES

!insertmacro MUI_LANGUAGE English

; An upgrade goes where the older version is: the settings and lists are there.
Function PassOverWhenInstalled
    ReadRegStr $0 HKCU "${ENTRY}" InstallLocation
    ${If} $0 != ""
    ${AndIf} $0 == $INSTDIR
        Abort
    ${EndIf}
FunctionEnd

; Goes on as soon as a file in $INSTDIR can be written or does not exist. Virus scanners hold a file for a moment,
; so it is tried for a second before the user is asked.
!macro WaitUntilWritable FILE SENTENCE
    StrCpy $1 1
    ${Do}
        ${IfNot} ${FileExists} "$INSTDIR\${FILE}"
            ${ExitDo}
        ${EndIf}
        ClearErrors
        FileOpen $0 "$INSTDIR\${FILE}" a
        ${IfNot} ${Errors}
            FileClose $0
            ${ExitDo}
        ${EndIf}
        ${If} $1 < 10
            IntOp $1 $1 + 1
            Sleep 100
            ${Continue}
        ${EndIf}
        ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
            "${SENTENCE} Please close it, then choose Retry." /SD IDCANCEL IDCANCEL`
            Abort "${SENTENCE}"
        ${EndIf}
    ${Loop}
!macroend

; A program that runs cannot be opened for writing.
!macro WaitUntilClosed
    !insertmacro WaitUntilWritable Quarn.exe "Quarn is running."
!macroend

!macro WaitUntilFree FILE
    !insertmacro WaitUntilWritable "${FILE}" "Another program is using ${FILE}."
!macroend

; Sets RESULT to the time of a file in $INSTDIR, as one text.
!macro TimeOf RESULT FILE
    GetFileTime "$INSTDIR\${FILE}" $8 $9
    StrCpy ${RESULT} "$8 $9"
!macroend

; Sets the error flag when the user has a file of this name that was changed since it was installed.
!macro CheckUntouched FILE
    ClearErrors
    ${If} ${FileExists} "$INSTDIR\${FILE}"
        !insertmacro TimeOf $0 "${FILE}"
        ReadRegStr $1 HKCU "${ENTRY}" "Time of ${FILE}"
        ${If} $0 != $1
            SetErrors
        ${Else}
            ClearErrors
        ${EndIf}
    ${EndIf}
!macroend

; Installs a file that users may edit; beside an edited one, as NAME.new.EXTENSION.
!macro InstallEditable NAME EXTENSION
    File "/oname=${NAME}.new.${EXTENSION}" "${FILES}/${NAME}.${EXTENSION}"
    !insertmacro CheckUntouched "${NAME}.${EXTENSION}"
    ${If} ${Errors}
        StrCpy $2 "$2$\r$\n${NAME}.${EXTENSION}; the new one is ${NAME}.new.${EXTENSION}"
    ${Else}
        Delete "$INSTDIR\${NAME}.${EXTENSION}"
        Rename "$INSTDIR\${NAME}.new.${EXTENSION}" "$INSTDIR\${NAME}.${EXTENSION}"
        !insertmacro TimeOf $0 "${NAME}.${EXTENSION}"
        WriteRegStr HKCU "${ENTRY}" "Time of ${NAME}.${EXTENSION}" $0
    ${EndIf}
!macroend

Section
    !insertmacro WaitUntilClosed

    StrCpy $3 first
    ${If} ${FileExists} $INSTDIR\Quarn.exe
        StrCpy $3 upgrade
    ${EndIf}

    ClearErrors
    SetOutPath $INSTDIR
    GetTempFileName $0 $INSTDIR
    ${If} ${Errors}
        MessageBox MB_OK|MB_ICONSTOP "You may not write to $INSTDIR. Please choose another folder." /SD IDOK
        Abort "$INSTDIR cannot be written to."
    ${EndIf}
    Delete $0

    ; Nothing is changed before everything can be.
    !include "${LISTS}/wait.nsh"
    !insertmacro WaitUntilFree Games.ini
    !insertmacro WaitUntilFree countryip.dat
    !insertmacro WaitUntilFree Uninstall.exe

    !include "${LISTS}/install.nsh"
    StrCpy $2 ""
    !insertmacro InstallEditable Games ini
    !insertmacro InstallEditable countryip dat
    ${If} $3 == first
    ${AndIfNot} ${FileExists} $INSTDIR\Quarn.ini
        File "${FILES}/Quarn.ini"
        !insertmacro TimeOf $0 Quarn.ini
        WriteRegStr HKCU "${ENTRY}" "Time of Quarn.ini" $0
    ${EndIf}
    WriteUninstaller $INSTDIR\Uninstall.exe

    ; The folder that the shortcut starts Quarn in is the one of the last SetOutPath.
    CreateShortcut "${SHORTCUT}" $INSTDIR\Quarn.exe

    WriteRegStr HKCU "${ENTRY}" DisplayName Quarn
    WriteRegStr HKCU "${ENTRY}" DisplayVersion ${VERSION}
    WriteRegStr HKCU "${ENTRY}" Publisher "${PUBLISHER}"
    WriteRegStr HKCU "${ENTRY}" DisplayIcon $INSTDIR\Quarn.exe
    WriteRegDWORD HKCU "${ENTRY}" EstimatedSize ${SIZE_KB}
    WriteRegStr HKCU "${ENTRY}" InstallLocation $INSTDIR
    WriteRegStr HKCU "${ENTRY}" UninstallString '"$INSTDIR\Uninstall.exe"'
    WriteRegStr HKCU "${ENTRY}" QuietUninstallString '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD HKCU "${ENTRY}" NoModify 1
    WriteRegDWORD HKCU "${ENTRY}" NoRepair 1

    ${If} $2 != ""
        MessageBox MB_OK|MB_ICONINFORMATION "You have changed these files, so they stay as they are:$\r$\n$2" /SD IDOK
    ${EndIf}
SectionEnd

!macro DeleteUntouched FILE
    !insertmacro CheckUntouched "${FILE}"
    ${IfNot} ${Errors}
        Delete "$INSTDIR\${FILE}"
    ${EndIf}
!macroend

Section Uninstall
    !insertmacro WaitUntilClosed

    !insertmacro DeleteUntouched Games.ini
    !insertmacro DeleteUntouched countryip.dat
    !insertmacro DeleteUntouched Quarn.ini
    Delete $INSTDIR\Games.new.ini
    Delete $INSTDIR\countryip.new.dat
    !include "${LISTS}/uninstall.nsh"

    ; What a run leaves behind that is worth nothing without the program.
    Delete $INSTDIR\Quarn.log
    Delete $INSTDIR\server.txt
    Delete $INSTDIR\Quarn.ini.new
    Delete $INSTDIR\servers-*.tmp
    Delete $INSTDIR\Favorites.ini.*.tmp

    ${If} ${FileExists} $INSTDIR\Quarn.ini
    ${OrIf} ${FileExists} $INSTDIR\servers-*.*
    ${OrIf} ${FileExists} $INSTDIR\Favorites.ini
    ${OrIf} ${FileExists} $INSTDIR\Games.ini
    ${OrIf} ${FileExists} $INSTDIR\countryip.dat
        ${If} ${Cmd} `MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 \
            "Remove your settings, your server lists and the files you have changed as well?" /SD IDNO IDYES`
            Delete $INSTDIR\Quarn.ini
            Delete $INSTDIR\servers-*.dat
            Delete $INSTDIR\servers-*.bak
            Delete $INSTDIR\Favorites.ini
            Delete $INSTDIR\Games.ini
            Delete $INSTDIR\countryip.dat
        ${EndIf}
    ${EndIf}

    Delete $INSTDIR\Uninstall.exe
    RMDir $INSTDIR
    Delete "${SHORTCUT}"
    DeleteRegKey HKCU "${ENTRY}"
SectionEnd
