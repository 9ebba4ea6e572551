; The installer: Turkish, for all users of the computer (C:\ORVAN) or for one (his own programs folder), over an older
; release too. Data\ and all other files that the program made are never touched, neither here nor by the uninstaller.
; Silent: /S; for whom: /AllUsers or /CurrentUser; folder: /D=C:\Klasor as the last word.
Target amd64-unicode              ; as the program: 64-bit Windows only

!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\ORVAN"

; An administrator is asked for whom, anybody else installs for himself; an older release says where it lies.
!define MULTIUSER_MUI
!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_FUNCTION ChoosePlace
!define MULTIUSER_INIT_TEXT_ALLUSERSNOTPOSSIBLE "Bütün kullanıcılar için kurmaya yetkiniz yok. Kurulumu yönetici olarak \
başlatınız ya da yalnız kendiniz için kurunuz."
; NSIS has no Turkish texts of this page.
!define MULTIUSER_TEXT_INSTALLMODE_TITLE "Kullanıcılar"
!define MULTIUSER_TEXT_INSTALLMODE_SUBTITLE "ORVAN'ı kimlerin kullanacağını seçiniz."
!define MULTIUSER_INNERTEXT_INSTALLMODE_TOP "Program bu bilgisayarın bütün kullanıcıları için ya da yalnız sizin için \
kurulabilir. Bütün kullanıcılar için kurulursa hepsi aynı kayıtlarla çalışır."
!define MULTIUSER_INNERTEXT_INSTALLMODE_ALLUSERS "Bu bilgisayarın bütün kullanıcıları için kur"
!define MULTIUSER_INNERTEXT_INSTALLMODE_CURRENTUSER "Yalnız benim için kur"
!include MultiUser.nsh
!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh

Name "ORVAN ${VERSION}"
OutFile "${OUT}"
SetCompressor /SOLID lzma
BrandingText "ORVAN ${VERSION}"
ShowInstDetails show
ManifestDPIAware true
AllowRootDirInstall true          ; the letter of a drive that leads to a share

Var GivenPlace                    ; /D=, which is stronger than any other place

!define MUI_ICON "..\icons\orvan.ico"
!define MUI_UNICON "..\icons\orvan.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "..\icons\installer.bmp"
!define MUI_UNWELCOMEFINISHPAGE_BITMAP "..\icons\installer.bmp"
!define MUI_ABORTWARNING
!define MUI_WELCOMEPAGE_TEXT "Bu sihirbaz ORVAN ${VERSION} programını kuracak ya da bilgisayarda bulunan eski sürümü \
güncelleyecek.$\r$\n$\r$\nKuruluma başlamadan önce ORVAN'ı bütün iş istasyonlarında kapatınız. Data klasöründeki \
kayıtlara dokunulmaz."
!define MUI_DIRECTORYPAGE_TEXT_TOP "Program bu klasöre kurulur; kayıtlar da bunun altındaki Data klasöründe tutulur. Birkaç \
iş istasyonu aynı kayıtlarla çalışacaksa hepsinin yazabildiği paylaşılan bir klasör seçiniz."
!define MUI_FINISHPAGE_TITLE "ORVAN ${VERSION} kuruldu"
!define MUI_FINISHPAGE_TEXT "Program kullanıma hazır. Pencereyi kapatmak için Bitir düğmesine basınız."
!define MUI_FINISHPAGE_RUN "$INSTDIR\orvan.exe"
!define MUI_FINISHPAGE_RUN_TEXT "ORVAN'ı başlat"

!insertmacro MUI_PAGE_WELCOME
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "Turkish"

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=1055 "ProductName" "ORVAN"
VIAddVersionKey /LANG=1055 "FileDescription" "ORVAN kurulumu"
VIAddVersionKey /LANG=1055 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1055 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=1055 "LegalCopyright" "ORVAN"

Function .onInit
  SetRegView 64
  StrCpy $GivenPlace $INSTDIR
  !insertmacro MULTIUSER_INIT
FunctionEnd

; Where the older release is, else the usual place.
Function ChoosePlace
  ReadRegStr $INSTDIR SHCTX "${KEY}" "InstallLocation"
  ${If} $INSTDIR == ""
    ${If} $MultiUser.InstallMode == "AllUsers"
      StrCpy $INSTDIR "$WINDIR" 2
      StrCpy $INSTDIR "$INSTDIR\ORVAN"
    ${Else}
      StrCpy $INSTDIR "$LOCALAPPDATA\Programs\ORVAN"
    ${EndIf}
  ${EndIf}
  ${If} $GivenPlace != ""
    StrCpy $INSTDIR $GivenPlace
  ${EndIf}
FunctionEnd

; A running program keeps its own file from being written: asked again until it is closed.
!macro RefuseWhileRunning
  ${Do}
    ${IfNot} ${FileExists} "$INSTDIR\orvan.exe"
      ${Break}
    ${EndIf}
    ClearErrors
    FileOpen $0 "$INSTDIR\orvan.exe" a
    ${IfNot} ${Errors}
      FileClose $0
      ${Break}
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "ORVAN bu klasörde açık ya da klasöre yazılamıyor:$\r$\n$INSTDIR$\r$\n$\r$\n\
Programı bütün iş istasyonlarında kapatıp yeniden deneyiniz." /SD IDCANCEL IDRETRY +3
    SetErrorLevel 2
    Abort "ORVAN açık: işlem yapılmadı."
  ${Loop}
!macroend

Section "ORVAN"
  !insertmacro RefuseWhileRunning
  SetOutPath "$INSTDIR"
  SetOverwrite on
  File /r "${STAGE}\*.*"
  CreateDirectory "$INSTDIR\Data"
  ; Everybody at this computer works on the same records; programs and libraries stay the administrator's.
  ${If} $MultiUser.InstallMode == "AllUsers"
    nsExec::Exec 'icacls "$INSTDIR" /grant *S-1-5-32-545:(OI)(CI)M'
    Pop $0
    nsExec::Exec 'icacls "$INSTDIR\*.exe" /inheritance:r /grant:r *S-1-5-32-544:F *S-1-5-18:F *S-1-5-32-545:RX'
    Pop $0
    nsExec::Exec 'icacls "$INSTDIR\*.dll" /inheritance:r /grant:r *S-1-5-32-544:F *S-1-5-18:F *S-1-5-32-545:RX'
    Pop $0
  ${EndIf}
  WriteUninstaller "$INSTDIR\kaldir.exe"

  CreateDirectory "$SMPROGRAMS\ORVAN"
  CreateShortcut "$SMPROGRAMS\ORVAN\ORVAN.lnk" "$INSTDIR\orvan.exe"
  CreateShortcut "$SMPROGRAMS\ORVAN\Kullanım Kılavuzu.lnk" "$INSTDIR\Kilavuz.htm"
  CreateShortcut "$SMPROGRAMS\ORVAN\Versiyonda Yapılanlar.lnk" "$INSTDIR\Versiyon.htm"
  CreateShortcut "$SMPROGRAMS\ORVAN\ORVAN'ı Kaldır.lnk" "$INSTDIR\kaldir.exe"
  CreateShortcut "$DESKTOP\ORVAN.lnk" "$INSTDIR\orvan.exe"

  WriteRegStr SHCTX "${KEY}" "DisplayName" "ORVAN - Mesleki Eğitim Merkezi Öğrenci Takip Programı"
  WriteRegStr SHCTX "${KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${KEY}" "DisplayIcon" "$INSTDIR\orvan.exe"
  WriteRegStr SHCTX "${KEY}" "Publisher" "ORVAN"
  WriteRegStr SHCTX "${KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${KEY}" "UninstallString" '"$INSTDIR\kaldir.exe"'
  WriteRegStr SHCTX "${KEY}" "QuietUninstallString" '"$INSTDIR\kaldir.exe" /S'
  WriteRegDWORD SHCTX "${KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${KEY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  IntFmt $0 "0x%08X" $0
  WriteRegDWORD SHCTX "${KEY}" "EstimatedSize" "$0"
SectionEnd

; The entry under which it was installed says for whom.
Function un.onInit
  SetRegView 64
  !insertmacro MULTIUSER_UNINIT
  ReadRegStr $0 HKCU "${KEY}" "InstallLocation"
  ${If} $0 == "$INSTDIR"
    Call un.MultiUser.InstallMode.CurrentUser
  ${EndIf}
FunctionEnd

Section "Uninstall"
  !insertmacro RefuseWhileRunning
  ; Only what was installed, by name. Data\, the settings and everything else that was made here later stays.
  !include "${STAGE}.remove.nsh"
  Delete "$INSTDIR\kaldir.exe"
  RMDir "$INSTDIR\Data" ; only when it is empty
  RMDir "$INSTDIR"      ; only when nothing is left

  RMDir /r "$SMPROGRAMS\ORVAN"
  Delete "$DESKTOP\ORVAN.lnk"
  DeleteRegKey SHCTX "${KEY}"
SectionEnd
