; The setup program: installs Sumwright for the user who runs it, without elevation. It is a 32-bit
; program, which every version of Windows runs, and installs the build that fits the system.
;
;   makensis -DSTAGING=... -DICON=... -DPICTURE=... -DOUTPUT=... setup.nsi
;
; STAGING is the folder with the programs and texts as ./package names them, ICON the program's
; icon, PICTURE the bitmap of 164 by 314 pixels on the last page, OUTPUT the setup program to write.
; /S installs and uninstalls silently, /D=FOLDER (last, without quotes) sets the folder, and
; /EXPLORER adds the entry to Explorer's menu.
Target x86-unicode
SetCompressor /SOLID lzma
SetDateSave off ; the same files give the same bytes, whenever they were built

!include FileFunc.nsh
!include LogicLib.nsh
!include MUI2.nsh
!include Sections.nsh
!include x64.nsh
!include Win\COM.nsh
!define /ifndef SLGP_RAWPATH 4

; Read from where the project defines them.
!searchparse /file "..\CMakeLists.txt" "project(Sumwright VERSION " VERSION " LANGUAGES"
!searchparse /file "..\src\app\install\setup_id.h" 'u"{' SETUP_ID '}_is1"'
!searchparse /file "..\src\app\desktop\addresses.h" 'ProductPage = u"' PRODUCT_PAGE '"'

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\{${SETUP_ID}}_is1"
!define FILE_ENTRY "Software\Classes\*\shell\ZendrikSumwright"
!define FOLDER_ENTRY "Software\Classes\Directory\shell\ZendrikSumwright"

Name "Sumwright"
OutFile "${OUTPUT}"
RequestExecutionLevel user
ManifestDPIAware true
InstallDir "$LOCALAPPDATA\Programs\Sumwright"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
BrandingText "Sumwright ${VERSION}"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Sumwright"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Sumwright setup"
VIAddVersionKey "CompanyName" "Zendrik"
VIAddVersionKey "LegalCopyright" "Copyright © 2026 the Sumwright authors"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\Sumwright.exe"
!define MUI_FINISHPAGE_RUN_TEXT "Start Sumwright"
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; The files installed with Sumwright.exe, by their names in the staging folder.
!macro ForEachOtherFile ACTION
  !insertmacro ${ACTION} "LICENSE.txt"
  !insertmacro ${ACTION} "NOTICE.txt"
  !insertmacro ${ACTION} "swrhash.exe"
  !insertmacro ${ACTION} "swrhash64.exe"
  !insertmacro ${ACTION} "swrhash-completion.ps1"
!macroend
!macro InstallFile NAME
  File "${STAGING}/${NAME}"
!macroend
!macro DeleteFile NAME
  Delete "$INSTDIR\${NAME}"
!macroend

; A running program can't be replaced. Continues once it can be, or ends the setup.
!macro WaitUntilProgramCanBeWritten
  ${DoWhile} ${FileExists} "$INSTDIR\Sumwright.exe"
    ClearErrors
    FileOpen $0 "$INSTDIR\Sumwright.exe" a
    ${IfNot} ${Errors}
      FileClose $0
      ${ExitDo}
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
      "Sumwright is running. Close its windows, then try again." /SD IDCANCEL IDRETRY +3
    SetErrorLevel 2
    Quit
  ${Loop}
!macroend

!macro WriteExplorerEntry KEY
  WriteRegStr HKCU "${KEY}" "" "Calculate checksums"
  WriteRegStr HKCU "${KEY}" "Icon" '"$INSTDIR\Sumwright.exe",0'
  WriteRegStr HKCU "${KEY}\command" "" '"$INSTDIR\Sumwright.exe" "%1"'
!macroend

; An entry of another copy is kept.
!macro RemoveOwnExplorerEntry KEY
  ReadRegStr $0 HKCU "${KEY}\command" ""
  ${If} $0 == '"$INSTDIR\Sumwright.exe" "%1"'
    DeleteRegKey HKCU "${KEY}"
  ${EndIf}
!macroend

Section "Sumwright" SectionProgram
  SectionIn RO
  !insertmacro WaitUntilProgramCanBeWritten
  SetOutPath "$INSTDIR"
  ; Every version of Windows for ARM processors runs the 32-bit program.
  ${If} ${IsNativeAMD64}
    File "${STAGING}/Sumwright.exe"
  ${Else}
    File "/oname=Sumwright.exe" "${STAGING}/Sumwright-x86.exe"
  ${EndIf}
  !insertmacro ForEachOtherFile InstallFile
  WriteUninstaller "$INSTDIR\Uninstall.exe"
  CreateShortcut "$SMPROGRAMS\Sumwright.lnk" "$INSTDIR\Sumwright.exe"

  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "Sumwright"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\Sumwright.exe,0"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "Zendrik"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "URLInfoAbout" "${PRODUCT_PAGE}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

Section /o "Explorer menu entry" SectionExplorer
  !insertmacro WriteExplorerEntry "${FILE_ENTRY}"
  !insertmacro WriteExplorerEntry "${FOLDER_ENTRY}"
  ${RefreshShellIcons}
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionProgram} "The program, with an entry in the Start menu."
  !insertmacro MUI_DESCRIPTION_TEXT ${SectionExplorer} \
    "Calculate checksums in Explorer's menu of files and folders."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function .onInit
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/EXPLORER" $1
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${SectionExplorer}
  ${EndIf}
FunctionEnd

; A link of another copy is kept. Preserves registers.
Function un.RemoveOwnSendToLink
  Push $0
  Push $1
  Push $2
  StrCpy $2 ""
  !insertmacro ComHlpr_CreateInProcInstance ${CLSID_ShellLink} ${IID_IShellLink} r0 ""
  ${If} $0 P<> 0
    ${IUnknown::QueryInterface} $0 '("${IID_IPersistFile}",.r1)'
    ${If} $1 P<> 0
      ${IPersistFile::Load} $1 '("$SENDTO\Sumwright.lnk",${STGM_READ})'
      ${IShellLink::GetPath} $0 '(.r2,${NSIS_MAX_STRLEN},0,${SLGP_RAWPATH})'
      ${IUnknown::Release} $1 ""
    ${EndIf}
    ${IUnknown::Release} $0 ""
  ${EndIf}
  ${If} $2 == "$INSTDIR\Sumwright.exe"
    Delete "$SENDTO\Sumwright.lnk"
  ${EndIf}
  Pop $2
  Pop $1
  Pop $0
FunctionEnd

; Removes only what the setup and the program have written: a folder with other files is kept.
Section "Uninstall"
  !insertmacro WaitUntilProgramCanBeWritten
  !insertmacro RemoveOwnExplorerEntry "${FILE_ENTRY}"
  !insertmacro RemoveOwnExplorerEntry "${FOLDER_ENTRY}"
  ${RefreshShellIcons}
  Call un.RemoveOwnSendToLink
  Delete "$SMPROGRAMS\Sumwright.lnk"
  Delete "$INSTDIR\Sumwright.exe"
  !insertmacro ForEachOtherFile DeleteFile
  Delete "$INSTDIR\Uninstall.exe"
  RMDir "$INSTDIR"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
  DeleteRegKey HKCU "Software\Zendrik\Sumwright"
  DeleteRegKey /ifempty HKCU "Software\Zendrik"
SectionEnd
