; A setup of one product, as a maker would write it:
;
;   ISCC /Q /DName=NAME /DVersion=VERSION /DFolder=NAME /DFiles=FOLDER /OFOLDER /FNAME [/DMutex=NAME] [/DQuestion=TEXT] [/DOld] product.iss
;
; Files has what goes to Program Files, with the product's own folder in it. The uninstaller removes all
; that was installed. It knows /SILENT, which does not answer what its maker's code asks, and does not
; keep it from telling that the application, which holds Mutex, is running. Old is one for 32 bits.

[Setup]
AppName={#Name}
AppVersion={#Version}
AppPublisher=Tessara Works
DefaultDirName={autopf}\{#Folder}
DisableProgramGroupPage=yes
#ifndef Old
ArchitecturesInstallIn64BitMode=x64compatible
#endif
#ifdef Mutex
AppMutex={#Mutex}
#endif

[Files]
Source: "{#Files}\*"; DestDir: "{autopf}"; Flags: recursesubdirs

#ifdef Question
[Code]
function InitializeUninstall: Boolean;
begin
  Result := MsgBox('{#Question}', mbConfirmation, MB_YESNO) = IDYES;
end;
#endif
