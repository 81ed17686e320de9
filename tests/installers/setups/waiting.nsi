; What a maker registers who wants to be waited for:
;
;   makensis -DPROGRAM=FILE waiting.nsi
;
; It runs the uninstaller beside it in silence. "_?=" has that work in its place, without a copy of itself
; that goes on alone.
Unicode true
Target amd64-unicode
Name "Uninstaller"
OutFile "${PROGRAM}"
RequestExecutionLevel admin
SilentInstall silent

Section
    ExecWait '"$EXEDIR\uninstall.exe" /S _?=$EXEDIR'
SectionEnd
