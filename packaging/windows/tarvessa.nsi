; The installer: for one user, without an administrator, into a folder where the logs can be written.
; Takes VERSION, PROGRAM (the folder to pack), REMOVALS (the commands that remove it), ICON and OUTPUT.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true

!include MUI2.nsh
!include FileFunc.nsh

!define REGISTRY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tarvessa"

Name "Tarvessa"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Tarvessa"
InstallDirRegKey HKCU "${REGISTRY}" "InstallLocation"
BrandingText "Tarvessa ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=1046 "ProductName" "Tarvessa"
VIAddVersionKey /LANG=1046 "FileDescription" "Instalador do Tarvessa"
VIAddVersionKey /LANG=1046 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1046 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=1046 "LegalCopyright" ""

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE FolderMustBeWritable
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\tarvessa.exe"
!define MUI_FINISHPAGE_RUN_NOTCHECKED
!define MUI_FINISHPAGE_SHOWREADME "$INSTDIR\leia-me.txt"
!define MUI_FINISHPAGE_SHOWREADME_TEXT "Mostrar o leia-me (fonte de dados QDX)"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "PortugueseBR"

; Sets the error flag when the folder takes no file.
!macro TryToWrite
  ClearErrors
  CreateDirectory "$INSTDIR"
  FileOpen $0 "$INSTDIR\gravacao.tmp" w
  ${IfNot} ${Errors}
    FileClose $0
    Delete "$INSTDIR\gravacao.tmp"
    ClearErrors
  ${EndIf}
!macroend
!define NOT_WRITABLE "A pasta $INSTDIR não aceita gravação, e o Tarvessa grava os seus registros na pasta \
onde está. Escolha outra pasta."

Function FolderMustBeWritable
  !insertmacro TryToWrite
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONEXCLAMATION "${NOT_WRITABLE}"
    Abort
  ${EndIf}
FunctionEnd

Section
  !insertmacro TryToWrite
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONSTOP "${NOT_WRITABLE}" /SD IDOK
    SetErrorLevel 2
    Quit
  ${EndIf}
  SetOutPath "$INSTDIR"
  File /r /x rpt "${PROGRAM}/*"
  ; The shop may have changed its layouts.
  SetOverwrite off
  SetOutPath "$INSTDIR\rpt"
  File "${PROGRAM}/rpt/*"
  SetOverwrite on
  SetOutPath "$INSTDIR"

  CreateShortcut "$SMPROGRAMS\Tarvessa.lnk" "$INSTDIR\tarvessa.exe"
  WriteUninstaller "$INSTDIR\desinstalar.exe"
  WriteRegStr HKCU "${REGISTRY}" "DisplayName" "Tarvessa"
  WriteRegStr HKCU "${REGISTRY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${REGISTRY}" "DisplayIcon" "$INSTDIR\tarvessa.exe"
  WriteRegStr HKCU "${REGISTRY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${REGISTRY}" "UninstallString" '"$INSTDIR\desinstalar.exe"'
  WriteRegStr HKCU "${REGISTRY}" "QuietUninstallString" '"$INSTDIR\desinstalar.exe" /S'
  WriteRegDWORD HKCU "${REGISTRY}" "NoModify" 1
  WriteRegDWORD HKCU "${REGISTRY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${REGISTRY}" "EstimatedSize" $0
SectionEnd

; By name, so that the logs, the layouts and whatever else lies there stay.
Section Uninstall
  !include "${REMOVALS}"
  Delete "$INSTDIR\desinstalar.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Tarvessa.lnk"
  DeleteRegKey HKCU "${REGISTRY}"
SectionEnd
