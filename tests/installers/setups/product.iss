; A setup of one product, as a maker would write it:
;
;   ISCC /Q /DName=NAME /DVersion=VERSION /DFolder=NAME /DFiles=FOLDER /OFOLDER /FNAME [/DMutex=NAME] [/DQuestion=TEXT] [/DOld] product.iss
;
; Files is the content for Program Files, including the product's own folder. The uninstaller removes
; everything that was installed. It knows /SILENT, which neither answers Question nor suppresses the message
; that the application, which holds Mutex, is running. Old makes a 32-bit setup.

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
