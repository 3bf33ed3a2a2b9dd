; The setup of Tidewell, for one user without administrator rights. ../release builds it and defines VERSION, COPYRIGHT,
; STAGE (the files' folder), SIZE (of the files, in bytes), ICON, PICTURE (on the last page), OUTPUT, and, for a signed
; setup, SIGN (a command).
;
; docs/releasing.md explains the switches and the exit codes.
!define EXIT_NOT_HERE 4
!define EXIT_IN_USE 5
!define EXIT_IS_ELSEWHERE 6

Unicode true
ManifestSupportedOS all
ManifestDPIAware true
RequestExecutionLevel user
SetCompressor /SOLID lzma
SetDateSave off ; otherwise each build would give other bytes

!include FileFunc.nsh
!include LogicLib.nsh
!include MUI2.nsh

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tidewell"
!define APPROVED_KEY "Software\Microsoft\Windows\CurrentVersion\Explorer\StartupApproved\StartupFolder"
!define NEW "$INSTDIR\Tidewell.new" ; all files are complete here before any is replaced
!define /math SIZE_ROUNDED ${SIZE} + 1023
!define /math SIZE_KB ${SIZE_ROUNDED} / 1024

Name Tidewell
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Tidewell" ; the program writes its settings beside itself
InstallDirRegKey HKCU "${UNINSTALL_KEY}" InstallLocation
BrandingText "Tidewell ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey CompanyName "Quorvane Systems"
VIAddVersionKey FileDescription "Tidewell Setup"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey LegalCopyright "${COPYRIGHT}"
VIAddVersionKey ProductName "Tidewell"
VIAddVersionKey ProductVersion "${VERSION}"

!ifdef SIGN
  !uninstfinalize `"${SIGN}" "%1"` = 0
  !finalize `"${SIGN}" "%1"` = 0
!endif

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_COMPONENTSPAGE_NODESC
!define MUI_FINISHPAGE_RUN "$INSTDIR\Tidewell.exe"
!insertmacro MUI_PAGE_COMPONENTS
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE CheckFolder
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

Var Name           ; of the file in $INSTDIR that the functions below act on
Var Former         ; the folder that the list of programs names
Var FolderIsNew    ; 1 if this setup makes $INSTDIR
Var Progress       ; "begun" once the folder is ours, "placing" once existing files are replaced
Var WasRunning     ; "shown" or "hidden" if a copy had to be ended
Var StartMenuEntry
Var StartupEntry

!macro Refuse code reason
  MessageBox MB_OK|MB_ICONSTOP "${reason}" /SD IDOK
  SetErrorLevel ${code}
  Abort ; calls .onInstFailed, or keeps the page open
!macroend

; The program comes first: if the setup is killed, its version resource still shows that the folder is ours.
!macro ForEachFile function
  StrCpy $Name Tidewell.exe
  Call ${function}
  StrCpy $Name LICENSE.txt
  Call ${function}
  StrCpy $Name NOTICES.txt
  Call ${function}
  StrCpy $Name uninstall.exe
  ${If} $EXEPATH != "$INSTDIR\$Name" ; with _?= the uninstaller runs from here
    Call ${function}
  ${EndIf}
!macroend

; NSIS wants separate functions for the setup and the uninstaller.
!macro SharedFunctions un

; Does not use NSIS's variables: they are empty if a folder is missing, and "\Tidewell.lnk" would be somebody else's.
Function ${un}FindMenus
  System::Call 'shell32::SHGetFolderPathW(p 0, i 0x8002, p 0, i 0, w .r1) i .r3' ; the Start menu, created if missing
  System::Call 'shell32::SHGetFolderPathW(p 0, i 0x8007, p 0, i 0, w .r2) i .r4' ; its Startup folder
  ${If} $3 != 0
  ${OrIf} $4 != 0
  ${OrIf} $LOCALAPPDATA == "" ; $INSTDIR would be a folder in the root of the current drive
    !insertmacro Refuse ${EXIT_NOT_HERE} "The folders of the user cannot be found."
  ${EndIf}
  StrCpy $StartMenuEntry "$1\Tidewell.lnk"
  StrCpy $StartupEntry "$2\Tidewell.lnk"
FunctionEnd

; If $INSTDIR\$Name is the running program, ends it by the same messages as the Restart Manager.
Function ${un}EndProgram
  FindWindow $1 TidewellMoon
  System::Call 'user32::GetWindowThreadProcessId(p r1, *i .r2)'
  System::Call 'kernel32::OpenProcess(i 0x1000, i 0, i r2) p .r2' ; PROCESS_QUERY_LIMITED_INFORMATION
  System::Call 'kernel32::QueryFullProcessImageNameW(p r2, i 0, w .r3, *i ${NSIS_MAX_STRLEN})'
  System::Call 'kernel32::CloseHandle(p r2)'
  ; That path has its links resolved. Resolve ours, too; the result begins with \\?\.
  System::Call 'kernel32::CreateFileW(w "$INSTDIR\$Name", i 0, i 7, p 0, i 3, i 0, p 0) p .r2'
  System::Call 'kernel32::GetFinalPathNameByHandleW(p r2, w .r4, i ${NSIS_MAX_STRLEN}, i 0)'
  System::Call 'kernel32::CloseHandle(p r2)'
  ${If} $4 != "\\?\$3"
    Return
  ${EndIf}
  System::Call 'user32::IsWindowVisible(p r1) i .r2'
  ${If} $2 <> 0
    StrCpy $WasRunning shown
  ${Else}
    StrCpy $WasRunning hidden
  ${EndIf}
  ClearErrors
  SendMessage $1 0x11 0 1 $2 /TIMEOUT=5000 ; WM_QUERYENDSESSION, ENDSESSION_CLOSEAPP
  ${IfNot} ${Errors} ; without an answer $2 is undefined
  ${AndIf} $2 <> 0
    SendMessage $1 0x16 1 1 /TIMEOUT=5000 ; WM_ENDSESSION, TRUE, ENDSESSION_CLOSEAPP
  ${EndIf}
FunctionEnd

; Waits until $INSTDIR\$Name can be replaced or deleted. A scanner may hold it for a moment, or it may be running.
; Opens without sharing: any other open handle may block the replacement.
Function ${un}WaitUntilFree
  SetFileAttributes "$INSTDIR\$Name" NORMAL ; a read-only file could not be opened for writing
  again:
  ${For} $5 0 50
    ; GENERIC_WRITE, DELETE
    System::Call 'kernel32::CreateFileW(w "$INSTDIR\$Name", i 0x40010000, i 0, p 0, i 3, i 0, p 0) p .r1 ?e'
    Pop $2
    System::Call 'kernel32::CloseHandle(p r1)'
    ${If} $1 <> -1
    ${OrIf} $2 <> 32 ; a sharing violation
      Return
    ${ElseIf} $5 = 0
      Call ${un}EndProgram
    ${EndIf}
    Sleep 100
  ${Next}
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "This file is in use. Please close Tidewell, or whatever else uses it.\
    $\n$\n$INSTDIR\$Name" /SD IDCANCEL IDRETRY again
  SetErrorLevel ${EXIT_IN_USE}
  Abort
FunctionEnd

; Sets $R0 to 1 if the shortcut $R2 is there and starts another program, like a portable copy, otherwise to 0.
Function ${un}IsForeign
  StrCpy $R0 0
  ${IfNot} ${FileExists} $R2
    Return
  ${EndIf}
  StrCpy $R0 1
  StrCpy $3 ""
  System::Call 'ole32::CoCreateInstance(g "{00021401-0000-0000-C000-000000000046}", p 0, i 1, \
    g "{000214F9-0000-0000-C000-000000000046}", *p .r1) i .r0' ; IShellLinkW
  ${If} $0 = 0
    System::Call '$1->0(g "{0000010B-0000-0000-C000-000000000046}", *p .r2) i .r0' ; IPersistFile
    ${If} $0 = 0
      ${For} $5 0 50
        System::Call '$2->5(w R2, i 0) i .r0' ; Load
        IntOp $0 $0 & 0xFFFF
        ${If} $0 <> 32 ; a sharing violation, by a scanner
          ${Break}
        ${EndIf}
        Sleep 100
      ${Next}
      System::Call '$1->3(w .r3, i ${NSIS_MAX_STRLEN}, p 0, i 0)' ; GetPath
      System::Call '$2->2()' ; Release
    ${EndIf}
    System::Call '$1->2()'
  ${EndIf}
  ${If} $0 = 32
    !insertmacro Refuse ${EXIT_IN_USE} "This file is in use. Please try again.$\n$\n$R2"
  ${EndIf}
  ${If} $3 == "$INSTDIR\Tidewell.exe"
  ${OrIf} $3 == "$Former\Tidewell.exe"
    StrCpy $R0 0
  ${EndIf}
FunctionEnd

; Deletes the file $R2, or ends with a message.
Function ${un}DeleteSurely
  ClearErrors
  Delete $R2
  ${If} ${Errors}
    !insertmacro Refuse ${EXIT_IN_USE} "This file cannot be removed. Please try again.$\n$\n$R2"
  ${EndIf}
FunctionEnd

Function ${un}DeleteStartupEntry
  StrCpy $R2 $StartupEntry
  Call ${un}IsForeign
  ${If} $R0 = 0
    DeleteRegValue HKCU "${APPROVED_KEY}" Tidewell.lnk ; the Task Manager's note on it
    Call ${un}DeleteSurely
  ${EndIf}
FunctionEnd

Function ${un}DeleteNew
  Delete "${NEW}\$Name"
FunctionEnd

; Deletes new files that were not placed, also those of a killed setup.
Function ${un}CleanUp
  !insertmacro ForEachFile ${un}DeleteNew
  Delete "${NEW}\Start menu.lnk"
  Delete "${NEW}\Startup.lnk"
  RMDir "${NEW}" ; only if it is empty
  ClearErrors
FunctionEnd

!macroend
!insertmacro SharedFunctions ""
!insertmacro SharedFunctions "un."

Function CannotWrite
  !insertmacro Refuse ${EXIT_NOT_HERE} "Tidewell cannot be written into this folder. Please choose another one.$\n$\n\
    $INSTDIR"
FunctionEnd

; Sets $R0 to 1 if the version resource of the program $R1 says that it is ours, otherwise to 0.
Function IsOurs
  StrCpy $R0 0
  System::Call 'version::GetFileVersionInfoSizeW(w R1, p 0) i .r1'
  ${If} $1 = 0
    Return
  ${EndIf}
  System::Alloc $1
  Pop $2
  System::Call 'version::GetFileVersionInfoW(w R1, i 0, i r1, p r2)'
  System::Call 'version::VerQueryValueW(p r2, w "\StringFileInfo\040904B0\CompanyName", *w .r3, *i)'
  System::Call 'version::VerQueryValueW(p r2, w "\StringFileInfo\040904B0\ProductName", *w .r4, *i)'
  System::Free $2
  ${If} $3 == "Quorvane Systems"
  ${AndIf} $4 == Tidewell
    StrCpy $R0 1
  ${EndIf}
FunctionEnd

; A text file does not name its owner, but the program beside it does.
Function RefuseForeignFile
  StrCpy $R1 "$INSTDIR\$Name"
  StrCpy $R2 $Name "" -4
  ${If} $R2 == .txt
    StrCpy $R1 "$INSTDIR\Tidewell.exe"
  ${EndIf}
  Call IsOurs
  ${If} $R0 = 0
  ${AndIf} ${FileExists} "$INSTDIR\$Name"
    !insertmacro Refuse ${EXIT_NOT_HERE} "This file in the folder is not Tidewell's. Please choose another folder.\
      $\n$\n$INSTDIR\$Name"
  ${EndIf}
FunctionEnd

; Refuses a second installation, and a folder with foreign files of our names.
Function CheckFolder
  ${If} $Former == $INSTDIR
    Return
  ${EndIf}
  ${If} $Former != ""
    StrCpy $R1 "$Former\Tidewell.exe"
    Call IsOurs
    ${If} $R0 = 1
      !insertmacro Refuse ${EXIT_IS_ELSEWHERE} "Tidewell is installed in another folder. Please update it there, or \
        remove it first.$\n$\n$Former"
    ${EndIf}
  ${EndIf}
  !insertmacro ForEachFile RefuseForeignFile
  ${If} ${FileExists} "${NEW}" ; not ours: a killed setup's would be in $Former
    !insertmacro Refuse ${EXIT_NOT_HERE} "This folder is not Tidewell's. Please choose another one.$\n$\n${NEW}"
  ${EndIf}
FunctionEnd

; Moves the new file $R1 to the path $R2. A scanner may hold either for a moment.
Function Place
  ${For} $5 0 50
    SetFileAttributes $R2 NORMAL
    ; MOVEFILE_REPLACE_EXISTING, _COPY_ALLOWED, _WRITE_THROUGH
    System::Call 'kernel32::MoveFileExW(w "${NEW}\$R1", w R2, i 11) i .r1'
    ${If} $1 <> 0
      Return
    ${EndIf}
    Sleep 100
  ${Next}
  !insertmacro Refuse ${EXIT_IN_USE} "This file cannot be replaced.$\n$\n$R2"
FunctionEnd

Function PlaceFile
  StrCpy $R1 $Name
  StrCpy $R2 "$INSTDIR\$Name"
  Call Place
FunctionEnd

Function PlaceEntry
  Call IsForeign
  ${If} $R0 = 0
    Call Place
  ${EndIf}
FunctionEnd

Section Tidewell
  SectionIn RO
SectionEnd

Section /o "Start with Windows" StartWithWindows
SectionEnd

; All or nothing: before WaitUntilFree no existing file is changed, and after it each step leaves a working copy.
Section -Install
  Call CheckFolder
  Call CleanUp
  ${IfNot} ${FileExists} "$INSTDIR"
    StrCpy $FolderIsNew 1
  ${EndIf}
  StrCpy $Progress begun
  WriteRegStr HKCU "${UNINSTALL_KEY}" InstallLocation "$INSTDIR" ; keeps the folder ours if the setup is killed
  SetOutPath "${NEW}"
  SetOverwrite try
  File "${STAGE}\Tidewell.exe"
  File "${STAGE}\LICENSE.txt"
  File "${STAGE}\NOTICES.txt"
  ${GetSize} "${NEW}" "/S=0B /G=0" $0 $1 $2
  WriteUninstaller "${NEW}\uninstall.exe"
  SetOutPath "$INSTDIR" ; the shortcuts' working folder
  CreateShortcut "${NEW}\Start menu.lnk" "$INSTDIR\Tidewell.exe"
  CreateShortcut "${NEW}\Startup.lnk" "$INSTDIR\Tidewell.exe" "" "" 0 SW_SHOWMINIMIZED
  ${If} ${Errors}
  ${OrIf} $0 <> ${SIZE}
    Call CannotWrite
  ${EndIf}

  !insertmacro ForEachFile WaitUntilFree
  StrCpy $Progress placing
  !insertmacro ForEachFile PlaceFile
  StrCpy $R1 "Start menu.lnk"
  StrCpy $R2 $StartMenuEntry
  Call PlaceEntry
  ${If} ${SectionIsSelected} ${StartWithWindows}
    StrCpy $R1 Startup.lnk
    StrCpy $R2 $StartupEntry
    Call PlaceEntry
  ${Else}
    Call DeleteStartupEntry
  ${EndIf}
  Call CleanUp

  WriteRegStr HKCU "${UNINSTALL_KEY}" DisplayName Tidewell
  WriteRegStr HKCU "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" Publisher "Quorvane Systems"
  WriteRegStr HKCU "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\Tidewell.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" EstimatedSize ${SIZE_KB}
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" NoModify 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" NoRepair 1
  ${If} ${Errors}
    !insertmacro Refuse ${EXIT_NOT_HERE} "Tidewell cannot be entered into the list of programs."
  ${EndIf}
SectionEnd

Function .onInit
  Call FindMenus
  ReadRegStr $Former HKCU "${UNINSTALL_KEY}" InstallLocation
  ; If the folder is impossible, NSIS silently takes the default one.
  System::Call 'kernel32::GetCommandLineW() p .r0'
  System::Call 'shlwapi::StrStrIW(p r0, w "/D=") p .r0'
  ${If} $0 <> 0
    System::Call 'kernel32::lstrcpynW(w .r1, p r0, i ${NSIS_MAX_STRLEN})'
    StrCpy $OUTDIR $1 "" 3 ; NSIS normalises it in the same way as $INSTDIR
    ${If} $OUTDIR != $INSTDIR
      StrCpy $INSTDIR $OUTDIR
      Call CannotWrite
    ${EndIf}
  ${EndIf}
  ; An update keeps the option to start with Windows, silent or not.
  StrCpy $R2 $StartupEntry
  Call IsForeign
  ${If} ${FileExists} $StartupEntry
  ${AndIf} $R0 = 0
    !insertmacro SelectSection ${StartWithWindows}
  ${EndIf}
FunctionEnd

Function StartAgain
  ${If} $WasRunning == shown
    ExecShell "" "$INSTDIR\Tidewell.exe"
  ${ElseIf} $WasRunning == hidden
    ExecShell "" "$INSTDIR\Tidewell.exe" "" SW_SHOWMINIMIZED
  ${EndIf}
FunctionEnd

; A silent update restarts the program. Otherwise the last page offers to start it.
Function .onInstSuccess
  SetErrorLevel 0 ; a page may have refused before
  ${If} ${Silent}
    Call StartAgain
  ${EndIf}
FunctionEnd

Function .onInstFailed
  GetErrorLevel $0
  ${If} $0 = -1 ; NSIS itself stopped, for example on a full disk
    SetErrorLevel ${EXIT_NOT_HERE}
  ${EndIf}
  ${If} $Progress != ""
    SetOutPath $TEMP ; otherwise CleanUp could not remove the current folder
    Call CleanUp
  ${EndIf}
  ${If} $Progress == begun
  ${AndIfNot} ${FileExists} "${NEW}"
    ; No existing file was replaced: undo the rest, too.
    ${If} $FolderIsNew = 1
      RMDir "$INSTDIR" ; only if it is empty
    ${EndIf}
    ${If} $Former != ""
      WriteRegStr HKCU "${UNINSTALL_KEY}" InstallLocation $Former
    ${Else}
      DeleteRegValue HKCU "${UNINSTALL_KEY}" InstallLocation
      DeleteRegKey /ifempty HKCU "${UNINSTALL_KEY}"
    ${EndIf}
  ${EndIf}
  Call StartAgain
FunctionEnd

Function un.onInit
  Call un.FindMenus
  ReadRegStr $Former HKCU "${UNINSTALL_KEY}" InstallLocation
  ${If} $Former != $INSTDIR
    !insertmacro Refuse ${EXIT_NOT_HERE} "Tidewell is not installed in this folder.$\n$\n$INSTDIR"
  ${EndIf}
FunctionEnd

; Stops at the first failure, so that uninstall.exe, the last one, stays for another try.
Function un.DeleteFile
  StrCpy $R2 "$INSTDIR\$Name"
  Call un.DeleteSurely
FunctionEnd

; The registry entry makes the folder ours. It goes last, so that the removal can be repeated.
Section Uninstall
  !insertmacro ForEachFile un.WaitUntilFree
  Call un.CleanUp
  ${If} ${FileExists} "$INSTDIR\vesk.dat"
    MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "Remove your settings (vesk.dat), too?" /SD IDNO IDNO keep
    Delete "$INSTDIR\vesk.dat"
    keep:
  ${EndIf}
  StrCpy $R2 $StartMenuEntry
  Call un.IsForeign
  ${If} $R0 = 0
    Call un.DeleteSurely
  ${EndIf}
  Call un.DeleteStartupEntry
  !insertmacro ForEachFile un.DeleteFile
  RMDir "$INSTDIR" ; only if it is empty
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
SectionEnd
