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

!macro LumoraRemoveUserData
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
