; The setup of Tidewell: for one user, without an administrator. ../release makes it and hands in VERSION, COPYRIGHT,
; STAGE (the folder of the files), SIZE_KB (of the files), ICON, PICTURE (for the last page), OUTPUT, and SIGN (a
; command) where it is to be signed.
;
; Silent with /S; /D=FOLDER, unquoted and last, names the folder. Exit codes beside NSIS's own:
!define EXIT_CANNOT_WRITE 4
!define EXIT_DOES_NOT_END 5

Unicode true
ManifestSupportedOS all
ManifestDPIAware true
RequestExecutionLevel user
SetCompressor /SOLID lzma
SetDateSave off ; the times of the files would make every setup another one

!include LogicLib.nsh
!include MUI2.nsh

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tidewell"
!define APPROVED_KEY "Software\Microsoft\Windows\CurrentVersion\Explorer\StartupApproved\StartupFolder"
!define START_MENU_ENTRY "$SMPROGRAMS\Tidewell.lnk"
!define STARTUP_ENTRY "$SMSTARTUP\Tidewell.lnk"

Name Tidewell
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Tidewell" ; where the program may write: its settings lie beside it
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
  !uninstfinalize `${SIGN} "%1"` = 0
  !finalize `${SIGN} "%1"` = 0
!endif

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_COMPONENTSPAGE_NODESC
!define MUI_FINISHPAGE_RUN "$INSTDIR\Tidewell.exe"
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

Var Folder     ; the one that the functions below look at
Var WasRunning ; "shown" or "hidden" when a copy had to be ended

; The setup and the uninstaller each need functions of their own, with the same text.
!macro RunningCopy un

; Whether the program in $Folder runs: $R0 is 1 or 0. The system refuses to open it for writing then. A window or the
; program's mutex would tell of a copy in any folder.
Function ${un}LookForRunningCopy
  System::Call 'kernel32::CreateFileW(w "$Folder\Tidewell.exe", i 0x40000000, i 7, p 0, i 3, i 0, p 0) p .r0 ?e'
  Pop $R0
  ${If} $0 <> -1
    System::Call 'kernel32::CloseHandle(p r0)'
  ${EndIf}
  ${If} $R0 = 32 ; a sharing violation
    StrCpy $R0 1
  ${Else}
    StrCpy $R0 0
  ${EndIf}
FunctionEnd

; Ends the program in $Folder if it runs, by the messages with which the system's Restart Manager ends a program.
Function ${un}EndRunningCopy
  again:
  Call ${un}LookForRunningCopy
  ${If} $R0 = 0
    Return
  ${EndIf}
  FindWindow $1 TidewellMoon
  ${If} $1 <> 0
    System::Call 'user32::IsWindowVisible(p r1) i .r2'
    ${If} $2 <> 0
      StrCpy $WasRunning shown
    ${Else}
      StrCpy $WasRunning hidden
    ${EndIf}
    SendMessage $1 0x11 0 1 $2 /TIMEOUT=5000 ; WM_QUERYENDSESSION, ENDSESSION_CLOSEAPP
    ${If} $2 <> 0
      SendMessage $1 0x16 1 1 /TIMEOUT=5000 ; WM_ENDSESSION, it ends, ENDSESSION_CLOSEAPP
    ${EndIf}
  ${EndIf}
  ${For} $1 1 50
    Call ${un}LookForRunningCopy
    ${If} $R0 = 0
      Return
    ${EndIf}
    Sleep 100
  ${Next}
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Tidewell is running and does not end. Please close it yourself.$\n$\n\
    $Folder\Tidewell.exe" /SD IDCANCEL IDRETRY again
  SetErrorLevel ${EXIT_DOES_NOT_END}
  Quit
FunctionEnd

!macroend
!insertmacro RunningCopy ""
!insertmacro RunningCopy "un."

Function CannotWrite
  MessageBox MB_OK|MB_ICONSTOP "Tidewell cannot be written into this folder. Please choose another one.$\n$\n\
    $INSTDIR" /SD IDOK
  SetErrorLevel ${EXIT_CANNOT_WRITE}
  Quit
FunctionEnd

; An update into another folder takes the settings along.
Function RemoveCopyElsewhere
  ${IfNot} ${FileExists} "$INSTDIR\vesk.dat"
    Rename "$Folder\vesk.dat" "$INSTDIR\vesk.dat"
  ${EndIf}
  ExecWait '"$Folder\uninstall.exe" /S _?=$Folder'
  Delete "$Folder\uninstall.exe" ; which, told to wait, runs from where it lies
  RMDir "$Folder"
  ClearErrors
FunctionEnd

Section Tidewell
  SectionIn RO

  ; Nothing is touched before it is sure that the new copy finds its place.
  ClearErrors
  CreateDirectory "$INSTDIR"
  GetTempFileName $0 "$INSTDIR"
  ${If} ${Errors}
    Call CannotWrite
  ${EndIf}
  Delete $0

  StrCpy $Folder $INSTDIR
  Call EndRunningCopy
  ReadRegStr $Folder HKCU "${UNINSTALL_KEY}" InstallLocation
  ${If} $Folder != $INSTDIR
  ${AndIf} ${FileExists} "$Folder\uninstall.exe"
    Call EndRunningCopy
    Call RemoveCopyElsewhere
  ${EndIf}

  ClearErrors
  SetOverwrite try
  SetOutPath "$INSTDIR"
  File "${STAGE}\Tidewell.exe"
  File "${STAGE}\LICENSE.txt"
  File "${STAGE}\NOTICES.txt"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  ${If} ${Errors}
    Call CannotWrite
  ${EndIf}

  CreateShortcut "${START_MENU_ENTRY}" "$INSTDIR\Tidewell.exe"
  Delete "${STARTUP_ENTRY}" ; made again below, if it is wanted
  WriteRegStr HKCU "${UNINSTALL_KEY}" DisplayName Tidewell
  WriteRegStr HKCU "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" Publisher "Quorvane Systems"
  WriteRegStr HKCU "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\Tidewell.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" EstimatedSize ${SIZE_KB}
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" NoModify 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" NoRepair 1
SectionEnd

Section /o "Start with Windows" StartWithWindows
  CreateShortcut "${STARTUP_ENTRY}" "$INSTDIR\Tidewell.exe" "" "" 0 SW_SHOWMINIMIZED
SectionEnd

; An update keeps the choice, silent or not.
Function .onInit
  ${If} ${FileExists} "${STARTUP_ENTRY}"
    !insertmacro SelectSection ${StartWithWindows}
  ${EndIf}
FunctionEnd

; After a silent update the program goes on; the last page of the other kind offers to start it.
Function .onInstSuccess
  ${If} ${Silent}
    ${If} $WasRunning == shown
      ExecShell "" "$INSTDIR\Tidewell.exe"
    ${ElseIf} $WasRunning == hidden
      ExecShell "" "$INSTDIR\Tidewell.exe" "" SW_SHOWMINIMIZED
    ${EndIf}
  ${EndIf}
FunctionEnd

Section Uninstall
  StrCpy $Folder $INSTDIR
  Call un.EndRunningCopy
  Delete "$INSTDIR\Tidewell.exe"
  Delete "$INSTDIR\LICENSE.txt"
  Delete "$INSTDIR\NOTICES.txt"
  Delete "$INSTDIR\uninstall.exe"
  ${If} ${FileExists} "$INSTDIR\vesk.dat"
    MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "Remove your settings (vesk.dat), too?" /SD IDNO IDNO keep
    Delete "$INSTDIR\vesk.dat"
    keep:
  ${EndIf}
  RMDir "$INSTDIR" ; which does so only when it is empty
  RMDir "$LOCALAPPDATA\Programs"

  Delete "${START_MENU_ENTRY}"
  Delete "${STARTUP_ENTRY}"
  DeleteRegValue HKCU "${APPROVED_KEY}" Tidewell.lnk ; what the Task Manager notes of that entry
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
SectionEnd
