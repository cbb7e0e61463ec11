; What both packages share. The script that includes it defines
;   PRODUCT      the name that people read
;   KEY          the name of its entry in the list of installed programs
;   DESCRIPTION  one line
;   UNINSTALLER  file name of the uninstaller in $INSTDIR
; and build.sh hands in BIN (the folder of the executables), MANUAL (the manual's file) and PACKAGES (where the
; package goes).
;
; Exit codes of a silent run, installer and uninstaller alike; the numbers are Windows' own:
;   0    done
;   2    a file could not be written, or the run was stopped
;   32   a file of the installation is in use: the program runs
;   87   an option is wrong
;   183  the reference host alone: this machine has a host system already
;   740  administrator's rights are missing
;   1603 the reference host alone: it was installed, and its check says that something is missing
;
; With /LOG=FILE installer and uninstaller add to a file what they do.

Unicode true
!ifdef AMD64
Target amd64-unicode
!define MACHINE "-x64"
!define PROGRAMS_FOLDER $PROGRAMFILES64
!else
!define MACHINE ""
!define PROGRAMS_FOLDER $PROGRAMFILES32
!endif
ManifestDPIAware true
ManifestSupportedOS all
RequestExecutionLevel admin
; A second for the build; the better method takes twenty and halves the demonstration alone.
SetCompressor /SOLID zlib

!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include x64.nsh
!include Options.nsh

; The executable's own version is the package's.
!ifndef VERSION
!getdllversion "${BIN}/QXBackupUtility.exe" VERSION_
!define VERSION "${VERSION_1}.${VERSION_2}.${VERSION_3}"
!endif

; The command that build.sh was given signs the package and, in it, the uninstaller.
!ifdef SIGN
!finalize '"${SIGN}" "%1"' = 0
!uninstfinalize '"${SIGN}" "%1"' = 0
!endif

!define PUBLISHER "QXBackupUtility developers"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${KEY}"
; The host system's key, which the host's library reads too.
!define HOST_KEY "SOFTWARE\Orvantis\TARSUS"

Name "${PRODUCT}"
Caption "${PRODUCT} ${VERSION} Setup"
BrandingText "${PRODUCT} ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "${PRODUCT}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "${DESCRIPTION}"
VIAddVersionKey LegalCopyright "${PUBLISHER}"
ShowInstDetails hide
ShowUninstDetails hide

!define MUI_ICON "../src/windows/resources/QXBackupUtility.ico"
!define MUI_UNICON "../src/windows/resources/QXBackupUtility.ico"
!define MUI_ABORTWARNING

; At the start of installer and uninstaller.
!macro Begin PREFIX
  SetShellVarContext all
  Call ${PREFIX}CheckOptions
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 != "Admin"
    !insertmacro Refuse 740 "Installing and removing ${PRODUCT} needs administrator's rights."
  ${EndIf}
!macroend

; Windows lets nobody write to a program that runs, or to a library that is loaded.
!macro RefuseWhileInUse FILE
  ${If} ${FileExists} "${FILE}"
    ClearErrors
    FileOpen $0 "${FILE}" a
    ${If} ${Errors}
      !insertmacro Refuse 32 "${FILE} is in use. Close it, then start again. Nothing was changed."
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

; 64-bit Windows keeps two registries. What a package of the other kind has entered stands in the other one.
!ifdef AMD64
!define OTHER_VIEW 32
!else
!define OTHER_VIEW 64
!endif
!macro ReadOther RESULT KEY_NAME VALUE
  StrCpy ${RESULT} ""
  ${If} ${RunningX64}
    SetRegView ${OTHER_VIEW}
    ReadRegStr ${RESULT} HKLM "${KEY_NAME}" "${VALUE}"
    SetRegView lastused
  ${EndIf}
!macroend

; Lets administrators and the system alone change a file or a folder with all in it, and everybody else read: what is
; started by an administrator must not be another user's to replace. A drive may have no such rights.
!macro Protect PATH INHERITANCE
  nsExec::Exec '"$SYSDIR\icacls.exe" "${PATH}" /inheritance:r /grant:r "*S-1-5-32-544:${INHERITANCE}F" \
    "*S-1-5-18:${INHERITANCE}F" "*S-1-5-32-545:${INHERITANCE}RX"'
  Pop $9
  ${If} $9 == 0
    !insertmacro Log "Protected: ${PATH}"
  ${Else}
    !insertmacro Tell "Not protected against other users: ${PATH} (icacls: $9)"
  ${EndIf}
!macroend
!define WITH_CONTENTS "(OI)(CI)"

; After the files: a silent run passes over a file that cannot be written, and must not count as done.
!macro RequireWritten
  ${If} ${Errors}
    !insertmacro Tell "A file could not be written to $INSTDIR. (exit code 2)"
    SetErrorLevel 2
    Abort "A file could not be written to $INSTDIR."
  ${EndIf}
!macroend

; ICON is a file name in $INSTDIR, SIZE the kilobytes that were installed.
!macro EnterInList ICON SIZE
  WriteRegStr HKLM "${UNINSTALL_KEY}" DisplayName "${PRODUCT}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" Publisher "${PUBLISHER}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\${ICON}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" Comments "${DESCRIPTION}"
  WriteRegStr HKLM "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\${UNINSTALLER}"'
  WriteRegStr HKLM "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\${UNINSTALLER}" /S'
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" EstimatedSize "${SIZE}"
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" NoModify 1
  WriteRegDWORD HKLM "${UNINSTALL_KEY}" NoRepair 1
  !insertmacro Log "Installed in $INSTDIR"
!macroend

; At the end of the uninstaller. Other programs may live in the folder: it goes only when it is empty.
!macro LeaveList
  Delete "$INSTDIR\${UNINSTALLER}"
  RMDir "$INSTDIR"
  DeleteRegKey HKLM "${UNINSTALL_KEY}"
  !insertmacro Log "Removed from $INSTDIR"
!macroend
