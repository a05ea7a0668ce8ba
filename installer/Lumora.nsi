; Lumora's installer: per user, no administrator rights. Made by scripts/make-installer.sh, which
; defines LUMORA_VERSION (x.y.z), LUMORA_BIN (the folder with Lumora.exe and tooltip.dll),
; LUMORA_ICON, LUMORA_WIZARD (the welcome picture, drawn by res/make-icon.py) and LUMORA_OUT.
; It carries the 64-bit build, so it is a 64-bit program itself; 32-bit Windows takes the portable zip.
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestDPIAware true

!include MUI2.nsh
!include FileFunc.nsh
!include LumoraFootprint.nsh

!define SYNCHRONIZE 0x00100000

Name "Lumora"
OutFile "${LUMORA_OUT}"
InstallDir "$LOCALAPPDATA\Programs\Lumora"
InstallDirRegKey HKCU "${LUMORA_UNINSTALL_KEY}" "InstallLocation"
BrandingText "Lumora ${LUMORA_VERSION}"

VIProductVersion "${LUMORA_VERSION}.0"
VIAddVersionKey /LANG=2052 "ProductName" "Lumora"
VIAddVersionKey /LANG=2052 "CompanyName" "Lumora"
VIAddVersionKey /LANG=2052 "FileDescription" "Lumora 安装程序"
VIAddVersionKey /LANG=2052 "FileVersion" "${LUMORA_VERSION}"
VIAddVersionKey /LANG=2052 "ProductVersion" "${LUMORA_VERSION}"
VIAddVersionKey /LANG=2052 "LegalCopyright" "Lumora 开发者"

!define MUI_ICON "${LUMORA_ICON}"
!define MUI_UNICON "${LUMORA_ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${LUMORA_WIZARD}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\Lumora.exe"
; The file types are the user's to choose: this opens Lumora's settings on them ("Lumora.exe set").
!define MUI_FINISHPAGE_SHOWREADME ""
!define MUI_FINISHPAGE_SHOWREADME_TEXT "设置文件类型"
!define MUI_FINISHPAGE_SHOWREADME_NOTCHECKED
!define MUI_FINISHPAGE_SHOWREADME_FUNCTION ChooseFileTypes
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "SimpChinese"

; A running Lumora holds its files: it is asked to close (as its close button does) and waited for.
; Silent runs close it without asking.
!macro CloseRunningLumora UN
Function ${UN}CloseRunningLumora
    FindWindow $0 "LumoraMain"
    StrCmp $0 0 done
    MessageBox MB_OKCANCEL|MB_ICONINFORMATION "Lumora 正在运行。单击“确定”关闭它并继续。" /SD IDOK IDOK close
    Abort
close:
    System::Call "user32::GetWindowThreadProcessId(p r0, *i .r1)"
    System::Call "kernel32::OpenProcess(i ${SYNCHRONIZE}, i 0, i r1) p .r2"
    System::Call "user32::PostMessageW(p r0, i ${WM_CLOSE}, p 0, p 0)"
    System::Call "kernel32::WaitForSingleObject(p r2, i 15000) i .r3"
    System::Call "kernel32::CloseHandle(p r2)"
    IntCmp $3 0 done
    MessageBox MB_OK|MB_ICONSTOP "无法关闭 Lumora。请先关闭它，然后再试一次。" /SD IDOK
    Abort
done:
FunctionEnd
!macroend
!insertmacro CloseRunningLumora ""
!insertmacro CloseRunningLumora "un."

Function ChooseFileTypes
    Exec '"$INSTDIR\Lumora.exe" set'
FunctionEnd

Section "Lumora"
    SetShellVarContext current
    Call CloseRunningLumora
    SetOutPath "$INSTDIR"
    ; Every file here has its removal in LumoraFootprint.nsh.
    File "${LUMORA_BIN}/Lumora.exe"
    File "${LUMORA_BIN}/tooltip.dll"
    WriteUninstaller "$INSTDIR\Uninstall.exe"
    CreateShortcut "$SMPROGRAMS\Lumora.lnk" "$INSTDIR\Lumora.exe" "" "$INSTDIR\Lumora.exe" 0 \
        SW_SHOWNORMAL "" "Lumora 媒体播放器"

    WriteRegStr HKCU "${LUMORA_UNINSTALL_KEY}" "DisplayName" "Lumora"
    WriteRegStr HKCU "${LUMORA_UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\Lumora.exe,0"
    WriteRegStr HKCU "${LUMORA_UNINSTALL_KEY}" "DisplayVersion" "${LUMORA_VERSION}"
    WriteRegStr HKCU "${LUMORA_UNINSTALL_KEY}" "Publisher" "Lumora"
    WriteRegStr HKCU "${LUMORA_UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${LUMORA_UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
    WriteRegStr HKCU "${LUMORA_UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD HKCU "${LUMORA_UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKCU "${LUMORA_UNINSTALL_KEY}" "NoRepair" 1
    ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
    WriteRegDWORD HKCU "${LUMORA_UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

Section "Uninstall"
    SetShellVarContext current
    Call un.CloseRunningLumora
    !insertmacro LumoraRemoveProgram
    ; Settings and the default list stay unless the user says otherwise; a silent uninstall removes them.
    MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 \
        "是否同时删除 Lumora 的设置、默认列表和歌词记录？$\n$\n选择“否”将保留它们，重新安装后继续使用。" \
        /SD IDYES IDNO keep
    !insertmacro LumoraRemoveUserData
keep:
SectionEnd
