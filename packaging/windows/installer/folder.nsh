; Whether the program may lie in the folder that was chosen.

!define OWN_PLACE "O Tarvessa grava os seus registros na pasta onde está. Escolha outra pasta."
!define NOT_WRITABLE "A pasta $INSTDIR não aceita gravação. ${OWN_PLACE}"
!define PROGRAM_FILES "A pasta $INSTDIR fica em Arquivos de Programas, onde o operador não pode gravar. ${OWN_PLACE}"

; An administrator can write there, but the operator who opens the program day by day cannot.
!macro RefuseBelow FOLDER
  StrLen $1 "${FOLDER}\"
  StrCpy $2 "$0\" $1
  ${If} "${FOLDER}" != ""
  ${AndIf} $2 == "${FOLDER}\"
    StrCpy $R0 "${PROGRAM_FILES}"
  ${EndIf}
!macroend

; Leaves in $0 the part of that path that exists.
Function ToExisting
  ${Do}
    ${If} $0 == ""
    ${OrIf} ${FileExists} "$0\*.*"
      ${ExitDo}
    ${EndIf}
    ${GetParent} $0 $0
  ${Loop}
FunctionEnd

; Whether the folder takes a file can only be tried. What had to be made for that goes again, so that a
; folder that is refused, or given up, leaves nothing behind.
Function TryToWrite
  StrCpy $0 $INSTDIR
  Call ToExisting
  ClearErrors
  CreateDirectory $INSTDIR
  FileOpen $1 "$INSTDIR\gravacao.tmp" w
  ${If} ${Errors}
    StrCpy $R0 "${NOT_WRITABLE}"
  ${Else}
    FileClose $1
    Delete "$INSTDIR\gravacao.tmp"
  ${EndIf}
  StrCpy $1 $INSTDIR
  ${While} $1 != $0
    RMDir $1
    ${GetParent} $1 $1
  ${EndWhile}
FunctionEnd

; Leaves in $R0 what is wrong with $INSTDIR, or nothing.
Function CheckFolder
  StrCpy $R0 ""
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 == "Admin"
    ; Not with NSIS' own GetFullPathName, which knows only what exists.
    System::Call 'kernel32::GetFullPathName(t "$INSTDIR", i ${NSIS_MAX_STRLEN}, t .r0, p 0)'
    StrCpy $1 $0 4
    ${If} $1 == "\\?\"
      StrCpy $0 $0 "" 4
    ${EndIf}
    Call ToExisting
    ; A folder may be written with its short name.
    System::Call 'kernel32::GetLongPathName(t r0, t .r0, i ${NSIS_MAX_STRLEN})'
    !insertmacro RefuseBelow $PROGRAMFILES64
    ReadEnvStr $3 "ProgramFiles(x86)"
    !insertmacro RefuseBelow $3
  ${EndIf}
  ${If} $R0 == ""
    Call TryToWrite
  ${EndIf}
FunctionEnd
