; The installer: for one user, without an administrator, into a folder where the logs can be written.
; Takes VERSION, PROGRAM (the folder to pack), REMOVALS (the commands that remove it), ICON and OUTPUT.
; When it does not do its work, it ends with 2.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true
; A file that cannot be replaced ends the installation.
AllowSkipFiles off

!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include "${__FILEDIR__}/folder.nsh"
!include "${__FILEDIR__}/open.nsh"
!include "${__FILEDIR__}/layouts.nsh"
!include "${REMOVALS}"

!define REGISTRY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tarvessa"

Name "Tarvessa"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Tarvessa"
InstallDirRegKey HKCU "${REGISTRY}" "InstallLocation"
BrandingText "Tarvessa ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=1046 "ProductName" "Tarvessa"
VIAddVersionKey /LANG=1046 "CompanyName" "Tarvessa"
VIAddVersionKey /LANG=1046 "FileDescription" "Instalador do Tarvessa"
VIAddVersionKey /LANG=1046 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1046 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=1046 "LegalCopyright" "© 2026 Tarvessa"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE FolderMustSuit
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

Function FolderMustSuit
  Call CheckFolder
  ${If} $R0 != ""
    MessageBox MB_OK|MB_ICONEXCLAMATION $R0
    Abort
  ${EndIf}
FunctionEnd

Section
  SetDetailsPrint none
  Call CheckFolder
  SetDetailsPrint lastused
  ${If} $R0 != ""
    MessageBox MB_OK|MB_ICONSTOP $R0 /SD IDOK
    SetErrorLevel 2
    Quit
  ${EndIf}
  !insertmacro EndWhileOpen
  SetOutPath "$INSTDIR"
  File /r /x rpt "${PROGRAM}/*"
  !insertmacro LayLayouts
  SetOutPath "$INSTDIR"

  CreateShortcut "$SMPROGRAMS\Tarvessa.lnk" "$INSTDIR\tarvessa.exe"
  WriteUninstaller "$INSTDIR\desinstalar.exe"
  WriteRegStr HKCU "${REGISTRY}" "DisplayName" "Tarvessa"
  WriteRegStr HKCU "${REGISTRY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${REGISTRY}" "Publisher" "Tarvessa"
  WriteRegStr HKCU "${REGISTRY}" "DisplayIcon" "$INSTDIR\tarvessa.exe"
  WriteRegStr HKCU "${REGISTRY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${REGISTRY}" "UninstallString" '"$INSTDIR\desinstalar.exe"'
  WriteRegStr HKCU "${REGISTRY}" "QuietUninstallString" '"$INSTDIR\desinstalar.exe" /S'
  WriteRegDWORD HKCU "${REGISTRY}" "NoModify" 1
  WriteRegDWORD HKCU "${REGISTRY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${REGISTRY}" "EstimatedSize" $0
SectionEnd

; By name, so that the logs, the layouts and whatever else lies there stay. While something is left of the
; program it is still among the installed ones, and can be removed again.
Section Uninstall
  !insertmacro EndWhileOpen
  ClearErrors
  !insertmacro RemoveFiles
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONSTOP "Há arquivos de $INSTDIR em uso. Feche os programas que os usam e tente de novo." \
      /SD IDOK
    SetErrorLevel 2
    Quit
  ${EndIf}
  !insertmacro RemoveFolders
  Delete "$INSTDIR\desinstalar.exe"
  RMDir "$INSTDIR"
  ; A copy that was installed later, elsewhere, keeps its entries.
  ReadRegStr $0 HKCU "${REGISTRY}" "InstallLocation"
  ${If} $0 == $INSTDIR
    Delete "$SMPROGRAMS\Tarvessa.lnk"
    DeleteRegKey HKCU "${REGISTRY}"
  ${EndIf}
SectionEnd
