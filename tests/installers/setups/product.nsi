; A setup of one product, as a maker would write it:
;
;   makensis -DNAME=NAME -DFOLDER=NAME -DFILES=FOLDER -DSETUP=FILE [-DSILENT | -DWAITING=FILE] product.nsi
;
; FILES is the content for Program Files, including the product's own FOLDER. The uninstaller removes the
; programs in that folder and the entry in the list of programs. It does not know /SILENT, which is /S
; here; with SILENT it is always silent. WAITING is a program that is registered in its place, see
; waiting.nsi.
Unicode true
Target amd64-unicode
Name "${NAME}"
OutFile "${SETUP}"
InstallDir "$PROGRAMFILES64\${FOLDER}"
RequestExecutionLevel admin
!define ENTRY "SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\${NAME}"

UninstPage uninstConfirm
UninstPage instfiles

Section
    SetOutPath "$PROGRAMFILES64"
    File /r "${FILES}/*"
    SetOutPath "$INSTDIR"
    WriteUninstaller "$INSTDIR\uninstall.exe"

    SetRegView 64
    WriteRegStr HKLM "${ENTRY}" "DisplayName" "${NAME}"

!ifdef WAITING
    File "/oname=uninstall silently.exe" "${WAITING}"
    WriteRegStr HKLM "${ENTRY}" "UninstallString" '"$INSTDIR\uninstall silently.exe"'
!else
    WriteRegStr HKLM "${ENTRY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
!endif
SectionEnd

!ifdef SILENT
Function un.onInit
    SetSilent silent
FunctionEnd
!endif

Section "Uninstall"
    Delete "$INSTDIR\*.exe"
    Delete "$INSTDIR\*.dll"
    RMDir "$INSTDIR" ; if nothing else is in it

    SetRegView 64
    DeleteRegKey HKLM "${ENTRY}"
SectionEnd
