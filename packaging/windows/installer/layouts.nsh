; A standard layout that the shop has left as it was is replaced by the new one; one that the shop has changed
; stays, and the new one lies beside it when it brings something new. The folder rpt\padrao, which holds what
; was laid down last, tells one from the other.

; Leaves 1 in $0 when the files $1 and $2 are both there and hold the same, 0 otherwise.
Function SameContents
  StrCpy $0 0
  ${IfNot} ${FileExists} $1
  ${OrIfNot} ${FileExists} $2
    Return
  ${EndIf}
  FileOpen $3 $1 r
  FileOpen $4 $2 r
  FileSeek $3 0 END $5
  FileSeek $4 0 END $6
  ${If} $5 = $6
    StrCpy $0 1
    FileSeek $3 0 SET
    FileSeek $4 0 SET
    ${While} $5 > 0
      FileReadByte $3 $7
      FileReadByte $4 $8
      ${If} $7 <> $8
        StrCpy $0 0
        ${ExitWhile}
      ${EndIf}
      IntOp $5 $5 - 1
    ${EndWhile}
  ${EndIf}
  FileClose $3
  FileClose $4
FunctionEnd

!macro Same ONE OTHER RESULT
  StrCpy $1 "${ONE}"
  StrCpy $2 "${OTHER}"
  Call SameContents
  StrCpy ${RESULT} $0
!macroend

!macro Lay NAME
  ClearErrors
  CopyFiles /SILENT "$PLUGINSDIR\padrao\$R1" "$INSTDIR\rpt\${NAME}"
  ${If} ${Errors}
    MessageBox MB_OK|MB_ICONSTOP "Não foi possível gravar o arquivo $INSTDIR\rpt\${NAME}." /SD IDOK
    SetErrorLevel 2
    Quit
  ${EndIf}
!macroend

; The layout named in $R1, the new one of which lies in $PLUGINSDIR\padrao.
Function LayLayout
  !insertmacro Same "$INSTDIR\rpt\$R1" "$INSTDIR\rpt\padrao\$R1" $R2
  !insertmacro Same "$INSTDIR\rpt\$R1" "$PLUGINSDIR\padrao\$R1" $R3
  !insertmacro Same "$INSTDIR\rpt\padrao\$R1" "$PLUGINSDIR\padrao\$R1" $R4
  ${If} $R2 = 1
  ${OrIf} $R3 = 1
  ${OrIfNot} ${FileExists} "$INSTDIR\rpt\$R1"
    !insertmacro Lay "$R1"
    Delete "$INSTDIR\rpt\$R1.novo"
  ${ElseIf} $R4 = 0
    !insertmacro Lay "$R1.novo"
    DetailPrint "$R1 foi mudado pela loja e ficou como estava; o novo original é $R1.novo."
  ${EndIf}
FunctionEnd

; Takes the new layouts from the package.
!macro LayLayouts
  InitPluginsDir
  SetOutPath "$PLUGINSDIR\padrao"
  File "${PROGRAM}/rpt/padrao/*.RPT"
  SetOutPath "$INSTDIR\rpt"
  File "${PROGRAM}/rpt/layout.xsd"
  FindFirst $R0 $R1 "$PLUGINSDIR\padrao\*.RPT"
  ${While} $R1 != ""
    Call LayLayout
    FindNext $R0 $R1
  ${EndWhile}
  FindClose $R0
  SetOutPath "$INSTDIR\rpt\padrao"
  File "${PROGRAM}/rpt/padrao/*.RPT"
!macroend
