; Everything Lumora and its installer leave on a machine, removed by the uninstaller.
; Keep this list in step with Lumora: every new place it writes (a registry key, a file, a folder)
; gets its removal here, and the round trip (tests/installer/run-round-trip.sh) checks it is gone.
; The user's own files are never touched: saved lists, exported QGC files, the music library folder.

!define LUMORA_UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Lumora"
!define LUMORA_SETTINGS_KEY "Software\Tavrinsoft\TavrinPlayer"

; The program itself: what the installer put down and registered.
!macro LumoraRemoveProgram
    Delete "$INSTDIR\Lumora.exe"
    Delete "$INSTDIR\tooltip.dll"
    Delete "$INSTDIR\Uninstall.exe"
    RMDir "$INSTDIR"
    Delete "$SMPROGRAMS\Lumora.lnk"
    DeleteRegKey HKCU "${LUMORA_UNINSTALL_KEY}"
!macroend

; What Lumora writes for its user as it runs.
!macro LumoraRemoveTooltipRegistration ROOT
    ; The balloon-tip component, registered at every start (app/Startup.cpp, TooltipRegistration).
    DeleteRegKey ${ROOT} "Software\Classes\TT.Tooltip"
    DeleteRegKey ${ROOT} "Software\Classes\CLSID\{F2E3C6F5-2F8F-41F9-BDA5-8E19A020CA7E}"
    DeleteRegKey ${ROOT} "Software\Classes\TypeLib\{D05692C8-7F34-4772-83F7-14DBBCB0433F}"
    DeleteRegKey ${ROOT} "Software\Classes\Interface\{E60ED377-9609-47AD-AC0B-7A7B92A4E657}"
    DeleteRegKey ${ROOT} "Software\Classes\Interface\{6E48358E-35AC-450B-8200-218C9660CC81}"
    DeleteRegKey ${ROOT} "Software\Classes\Interface\{F14B28A2-3ACE-444D-8F47-9C5DC79E411D}"
!macroend

; The file types and verbs the user registered in Lumora's settings (shell/FileTypes.cpp, FileTypeItems):
; each extension gets its earlier handler back from "filebak", as Lumora's own removal does, and the keys
; Lumora made go when nothing else is left in them.
!define LUMORA_FILE_TYPES ".avi;.mpg;.dat;.mpeg;.mp3;.mp2;.mp1;.wav;.aif;.aifc;.aiff;.mv1;.mov;.mpa;.snd;.mpm;.mpv;.enc;.mid;.rmi;.midi;.vob;.wma;.wax;.wmv;.wvx;.asf;.asx;.wmx;.wmp;.wpl;.qt;.au;.swf;.spl;.mpga;.bmp;.dib;.jpg;.wmf;.emf;.gif;.ico;.cur;.rm;.rmvb;.ra;.cda;.qlb;"

; A key without sub-keys and values: DeleteRegKey /ifempty alone would drop its values too. (A key's
; default value is listed with an empty name; only a key with no value at all sets the error flag.)
!macro LumoraRemoveKeyIfBare KEY
    ClearErrors
    EnumRegValue $2 HKCU "${KEY}" 0
    IfErrors 0 +2
        DeleteRegKey /ifempty HKCU "${KEY}"
!macroend

; $R1: the extension. Uses $0-$2.
Function un.LumoraRemoveFileType
    StrCpy $0 "Software\Classes\$R1"
    ReadRegStr $1 HKCU $0 ""
    StrCmp $1 "ZEV_$R1" 0 handlerDone
    ClearErrors
    ReadRegStr $2 HKCU $0 "filebak"
    IfErrors 0 +3
        WriteRegStr HKCU $0 "" ""
        Goto handlerDone
    StrCmp $2 "" 0 +3
        DeleteRegValue HKCU $0 ""
        Goto handlerDone
    WriteRegStr HKCU $0 "" $2
handlerDone:
    DeleteRegValue HKCU $0 "filebak"
    DeleteRegValue HKCU "$0\OpenWithProgids" "ZEV_$R1"
    !insertmacro LumoraRemoveKeyIfBare "$0\OpenWithProgids"
    !insertmacro LumoraRemoveKeyIfBare $0
    DeleteRegKey HKCU "Software\Classes\ZEV_$R1"
FunctionEnd


Function un.LumoraRemoveFileTypes
    StrCpy $R0 "${LUMORA_FILE_TYPES}"
next:
    StrCmp $R0 "" done
    StrCpy $R1 ""
    ; Cut the first extension off the list.
    StrCpy $R2 0
scan:
    StrCpy $R3 $R0 1 $R2
    StrCmp $R3 ";" cut
    IntOp $R2 $R2 + 1
    Goto scan
cut:
    StrCpy $R1 $R0 $R2
    IntOp $R2 $R2 + 1
    StrCpy $R0 $R0 "" $R2
    Call un.LumoraRemoveFileType
    Goto next
done:
    ; The folder and drive verbs.
    DeleteRegKey HKCU "Software\Classes\Directory\shell\ZEV-PLAYER"
    !insertmacro LumoraRemoveKeyIfBare "Software\Classes\Directory\shell"
    !insertmacro LumoraRemoveKeyIfBare "Software\Classes\Directory"
    DeleteRegKey HKCU "Software\Classes\Drive\shell\ZEV-PLAYER"
    !insertmacro LumoraRemoveKeyIfBare "Software\Classes\Drive\shell"
    !insertmacro LumoraRemoveKeyIfBare "Software\Classes\Drive"
    ; Lumora among the capable applications (its Capabilities go with the settings key).
    DeleteRegValue HKCU "Software\RegisteredApplications" "Lumora"
    !insertmacro LumoraRemoveKeyIfBare "Software\RegisteredApplications"
FunctionEnd

!macro LumoraRemoveUserData
    Call un.LumoraRemoveFileTypes
    ; Options, window places and the setup key's values.
    DeleteRegKey HKCU "${LUMORA_SETTINGS_KEY}"
    DeleteRegKey /ifempty HKCU "Software\Tavrinsoft"
    ; A limited user's registration goes to HKCU; with administrator rights (XP, Wine) Lumora writes
    ; HKEY_CLASSES_ROOT, which lands in HKLM. Without those rights the second removal just fails.
    !insertmacro LumoraRemoveTooltipRegistration HKCU
    !insertmacro LumoraRemoveTooltipRegistration HKLM
    ; The default list, the INI files and the lyrics records (zvp3mr.qlb, tavrinplay.ini, zvplaygc.ini).
    RMDir /r "$APPDATA\Lumora"
!macroend
