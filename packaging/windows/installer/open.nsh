!define STILL_OPEN "O Tarvessa está aberto. Feche-o e tente de novo."

; Ends with nothing changed while the program in the folder is running: its files cannot be replaced then, and
; some of them without the others would be no program. Windows gives nobody a running program's file to write.
!macro EndWhileOpen
  ${If} ${FileExists} "$INSTDIR\tarvessa.exe"
    ; A copy from a medium that is only read cannot be written either.
    SetFileAttributes "$INSTDIR\tarvessa.exe" NORMAL
    ${Do}
      ClearErrors
      FileOpen $0 "$INSTDIR\tarvessa.exe" a
      ${IfNot} ${Errors}
        FileClose $0
        ${ExitDo}
      ${EndIf}
      ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "${STILL_OPEN}" /SD IDCANCEL IDCANCEL`
        SetErrorLevel 2
        Quit
      ${EndIf}
    ${Loop}
  ${EndIf}
!macroend
