; The command line of installer and uninstaller: what is not known is refused, /LOG=FILE is opened.
;
;   !insertmacro OptionFunctions PREFIX     PREFIX is empty or "un."
;
; A package with an option of its own defines OPTION as its beginning, such as "/CABARC=". NSIS takes /D= and _?= off
; the line itself.

Var LogFile

; A line, where a log was asked for. Uses $9.
!macro Log TEXT
  ${If} $LogFile != ""
    FileOpen $9 "$LogFile" a
    FileSeek $9 0 END
    FileWrite $9 "${TEXT}$\r$\n"
    FileClose $9
  ${EndIf}
!macroend

; To the window that a silent run was started from, and to the log.
!macro Tell TEXT
  !insertmacro Log "${TEXT}"
  ${If} ${Silent}
    System::Call "kernel32::AttachConsole(i -1)"
    System::Call "kernel32::GetStdHandle(i -11)p.r9"
    FileWrite $9 "${TEXT}$\r$\n"
  ${EndIf}
!macroend

; Ends the run with a message, or silently with the exit code.
!macro Refuse CODE MESSAGE
  !insertmacro Tell "${MESSAGE} (exit code ${CODE})"
  MessageBox MB_OK|MB_ICONSTOP "${MESSAGE}" /SD IDOK
  SetErrorLevel ${CODE}
  Quit
!macroend

!macro OptionFunctions PREFIX
; One word of the command line, in $R1.
Function ${PREFIX}CheckOption
!ifdef OPTION
  StrLen $R3 "${OPTION}"
  StrCpy $R4 $R1 $R3
  ${If} $R4 == "${OPTION}"
    Return
  ${EndIf}
!endif
  StrCpy $R4 $R1 5
  ${If} $R1 != ""
  ${AndIf} $R1 != "/S"
  ${AndIf} $R1 != "/NCRC"
  ${AndIf} $R4 != "/LOG="
    !insertmacro Refuse 87 "Unknown option: $R1"
  ${EndIf}
FunctionEnd

Function ${PREFIX}CheckOptions
  ${GetParameters} $R0
  ClearErrors
  ${GetOptions} $R0 "/LOG=" $LogFile
  ${IfNot} ${Errors}
    FileOpen $R2 "$LogFile" a
    ${If} ${Errors}
      StrCpy $R2 $LogFile
      StrCpy $LogFile ""
      !insertmacro Refuse 87 "The log $R2 cannot be written."
    ${EndIf}
    FileClose $R2
  ${EndIf}
  ${GetTime} "" "L" $R1 $R2 $R3 $R4 $R4 $R5 $R6
  !insertmacro Log "$R3-$R2-$R1 $R4:$R5:$R6 ${PRODUCT} ${VERSION}: $CMDLINE"
  ; Word by word; a blank between quotes belongs to its word.
  StrCpy $R0 "$R0 "
  StrCpy $R1 ""
  StrCpy $R6 ""
  ${Do}
    StrCpy $R2 $R0 1
    StrCpy $R0 $R0 "" 1
    ${If} $R2 == '"'
      StrCpy $R6 "$R6$R2"
      ${If} $R6 == '""'
        StrCpy $R6 ""
      ${EndIf}
    ${ElseIf} "$R6$R2" == " "
      Call ${PREFIX}CheckOption
      StrCpy $R1 ""
    ${Else}
      StrCpy $R1 "$R1$R2"
    ${EndIf}
  ${LoopUntil} $R0 == ""
FunctionEnd
!macroend
