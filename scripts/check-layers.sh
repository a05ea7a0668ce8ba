#!/usr/bin/env bash
# The layering: portable code (every product source outside ui/ that is not a *_win.* file) never
# includes a Windows header, a ui/ header or a *_win.h header; it reaches Windows only through
# ports/. platform/ holds only Windows implementations (*_win.*).
set -euo pipefail
cd "$(dirname "$0")/.."

# Headers of the Windows SDK and of the Microsoft C runtime that only exist on Windows. Compared
# in lower case, by name, whatever folder the include names.
windows_headers='
windows.h windowsx.h windef.h winbase.h winnt.h winuser.h wingdi.h winreg.h winerror.h winnls.h
wincon.h winver.h winsvc.h winioctl.h winspool.h winnetwk.h winperf.h wtypes.h wtypesbase.h
basetsd.h guiddef.h initguid.h rpc.h rpcndr.h rpcdce.h sdkddkver.h minwindef.h minwinbase.h
processthreadsapi.h synchapi.h fileapi.h handleapi.h memoryapi.h libloaderapi.h sysinfoapi.h
errhandlingapi.h stringapiset.h winsock.h winsock2.h ws2tcpip.h mswsock.h iphlpapi.h wininet.h
winhttp.h urlmon.h mmsystem.h mmreg.h msacm.h mciavi.h vfw.h digitalv.h dsound.h dshow.h strmif.h
mmdeviceapi.h audioclient.h endpointvolume.h ks.h ksmedia.h wmsdk.h mfapi.h mfidl.h mfreadwrite.h
commctrl.h commdlg.h cderr.h dlgs.h richedit.h prsht.h uxtheme.h dwmapi.h ole2.h oleidl.h olectl.h
oleauto.h oaidl.h ocidl.h objbase.h objidl.h unknwn.h combaseapi.h comdef.h comutil.h comip.h
docobj.h servprov.h exdisp.h mshtml.h activscp.h shlobj.h shlobj_core.h shellapi.h shlwapi.h
shobjidl.h shtypes.h shldisp.h knownfolders.h propkey.h propvarutil.h propidl.h tlhelp32.h
psapi.h dbghelp.h imagehlp.h winternl.h ntstatus.h ntddcdrm.h ntddstor.h ntddscsi.h dbt.h
setupapi.h cfgmgr32.h devguid.h wtsapi32.h lmcons.h lmaccess.h sddl.h aclapi.h accctrl.h
wincrypt.h bcrypt.h ncrypt.h d3d9.h d3d11.h dxgi.h ddraw.h gdiplus.h wincodec.h mapi.h ras.h
atlbase.h atlcom.h atlwin.h atlstr.h tchar.h direct.h io.h conio.h crtdbg.h
'

declare -A is_windows_header=()
for h in $windows_headers; do is_windows_header[$h]=1; done

is_portable() {
    case "$1" in
        ui/*|*_win.*) return 1 ;;
    esac
    return 0
}

bad=0
report() { echo "check-layers: $1" >&2; bad=1; }

while IFS= read -r file; do
    is_portable "$file" || continue
    while IFS= read -r line; do
        target=$(sed -E 's/^[[:space:]]*#[[:space:]]*include[[:space:]]*[<"]([^">]+)[">].*/\1/' <<<"$line")
        name=$(basename "$target" | tr '[:upper:]' '[:lower:]')
        if [[ -n "${is_windows_header[$name]:-}" ]]; then
            report "$file includes the Windows header <$target>"
        elif [[ "$target" == ui/* ]]; then
            report "$file includes the window header \"$target\""
        elif [[ "$name" == *_win.h ]]; then
            report "$file includes the Windows implementation \"$target\""
        fi
    done < <(grep -E '^[[:space:]]*#[[:space:]]*include[[:space:]]*[<"]' "$file" || true)
done < <(find . -path ./.git -prune -o -path './build*' -prune -o \
              \( -path ./tests -o -path ./fuzz -o -path ./bench \) -prune -o \
              -type f \( -name '*.h' -o -name '*.hpp' -o -name '*.c' -o -name '*.cpp' \) -print |
         sed 's#^\./##' | sort)

while IFS= read -r file; do
    report "platform/ holds only Windows implementations (*_win.*), not $file"
done < <(find platform -type f ! -name '*_win.*' 2>/dev/null | sort)

[ "$bad" -eq 0 ] || exit 1
echo "check-layers: portable code reaches Windows only through ports/"
