; An uninstaller that waits until the real one ends:
;
;   makensis -DPROGRAM=FILE waiting.nsi
;
; It runs the uninstaller beside it silently. "_?=" makes that one work in place, without starting a copy of
; itself.
Unicode true
Target amd64-unicode
Name "Uninstaller"
OutFile "${PROGRAM}"
RequestExecutionLevel admin
SilentInstall silent

Section
    ExecWait '"$EXEDIR\uninstall.exe" /S _?=$EXEDIR'
SectionEnd
