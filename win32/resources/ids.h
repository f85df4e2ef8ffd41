#pragma once

/* Numbers of the program's resources, commands and controls. Read by the resource compiler as well, so it
   holds definitions only. Each name is ID_ and the name of the menu entry or control it stands for. */

/* Resources */
#define IDR_MAIN_MENU 100
#define IDR_POPUP_MENUS 101
#define IDR_ACCELERATORS 102
#define IDR_SERVER_LIST_ACCELERATORS 103
#define IDR_TREE_ACCELERATORS 104
#define IDR_SEARCH_ACCELERATORS 105

/* Menus: those of the bar, then the pop-ups of the tray icon and of the tree */
#define ID_mnuFile 1000
#define ID_mnuFileQuit 1001

#define ID_mnuServer 1100
#define ID_mnuServConnectPlay 1101
#define ID_mnuServConnectSpec 1102
#define ID_mnuServSeperator1 1103
#define ID_mnuServSetPass 1104
#define ID_mnuServSeperator2 1105
#define ID_mnuServRefresh 1106
#define ID_mnuServRefreshAll 1107
#define ID_mnuServSeperator3 1108
#define ID_mnuServAdd 1109
#define ID_mnuServDelete 1110
#define ID_mnuServSeperator4 1111
#define ID_mnuServFavoritesAdd 1112
#define ID_mnuServMonitor 1113
#define ID_mnuServSeperator5 1114
#define ID_mnuServCopyAddress 1115

/* The entry of favorites folder n, 1 to 9, is ID_mnuServAddToFavorites + n. */
#define ID_mnuServAddToFavorites 1150
#define ID_mnuServAddToFavorites1 1151
#define ID_mnuServAddToFavorites2 1152
#define ID_mnuServAddToFavorites3 1153
#define ID_mnuServAddToFavorites4 1154
#define ID_mnuServAddToFavorites5 1155
#define ID_mnuServAddToFavorites6 1156
#define ID_mnuServAddToFavorites7 1157
#define ID_mnuServAddToFavorites8 1158
#define ID_mnuServAddToFavorites9 1159

#define ID_mnuServerList 1200
#define ID_mnuServerListGet 1201
#define ID_mnuServerListClear 1202
#define ID_mnuServerListSeperator1 1203
#define ID_mnuRecheckCountries 1204
#define ID_mnuServerListSeperator2 1205
#define ID_mnuServerListExport 1206

#define ID_mnuExtras 1300
#define ID_mnuExtrasGameSetup 1301
#define ID_mnuExtrasSeperator 1302
#define ID_mnuExtrasOptions 1303

#define ID_mnuInfo 1400
#define ID_mnuInfoHelp 1401
#define ID_mnuInfoSeperator 1402
#define ID_mnuInfoAbout 1403

#define ID_mnuSysTray 1500
#define ID_mnuSysOpen 1501
#define ID_mnuSysSeperator1 1502
#define ID_mnuSysQuit 1503

#define ID_mnuTreeView 1600
#define ID_mnuTreeRename 1601
#define ID_mnuTreeSeperator1 1602
#define ID_mnuTreeAddServer 1603

/* Keys without a menu entry */
#define ID_keyStop 1701
#define ID_keySelectAll 1702
#define ID_keySearch 1703

/* Controls of the main window */
#define ID_trvGames 2001
#define ID_lvwServers 2002
#define ID_lvwPlayers 2003
#define ID_lvwServVars 2004
#define ID_tbMain 2005
#define ID_sbMain 2006
#define ID_pbScanning 2007
#define ID_txtSearch 2008

/* The toolbar button at position n, separators counted, has the command ID_tbMainButton + n. */
#define ID_tbMainButton 2100

/* Controls of the dialogs */
#define ID_lblVersion 3001
#define ID_cmdSystemInfo 3002

#define ID_txtIP 3101
#define ID_txtPort 3102
#define ID_lblList 3103
#define ID_lblMessage 3104

#define ID_lblMsg 3201
#define ID_txtPass 3202
#define ID_lblSeperator 3203

#define ID_lvwGameSel 3301
#define ID_fraLocation 3302
#define ID_lblPath 3303
#define ID_txtPath 3304
#define ID_cmdBrowse 3305
#define ID_fraSettings 3306
#define ID_lblConfig 3307
#define ID_txtConfig 3308
#define ID_lblName 3309
#define ID_txtName 3310
#define ID_chkVisible 3311
#define ID_lblDefinDescr 3312
#define ID_lblDefinition 3313
#define ID_lblDefinVerDescr 3314
#define ID_lblDefVersion 3315
#define ID_LayoutLine1 3316
#define ID_LayoutLine2 3317

/* The input box */
#define ID_lblInputPrompt 3501
#define ID_txtInput 3502

#define ID_sstOptions 3401
#define ID_fraGenWindow 3402
#define ID_chkMinToTray 3403
#define ID_chkKeepOnTop 3404
#define ID_chkRemWinPos 3405
#define ID_fraScanConnection 3406
#define ID_lblScanPingTimeout 3407
#define ID_txtScanPingTimeout 3408
#define ID_lblScanPingUnit 3409
#define ID_fraStartOptions 3410
#define ID_fraFavorites 3411
#define ID_lblFavNum 3412
#define ID_cmbNumFavorites 3413

/* The option with index n is ID_optQuitAfterLaunch + n. */
#define ID_optQuitAfterLaunch 3420
#define ID_optQuitAfterLaunch0 3420
#define ID_optQuitAfterLaunch1 3421
#define ID_optQuitAfterLaunch2 3422

#define ID_fraExtrasScanning 3430
#define ID_lblSimultaneous 3431
#define ID_txtSimultaneous 3432
#define ID_updSimultaneous 3433
#define ID_lblOneByOne 3434
#define ID_chkAskMasterFirst 3435
#define ID_chkListOnce 3436
#define ID_fraExtrasList 3437
#define ID_chkSaveListAtExit 3438
#define ID_chkNaturalSort 3439
#define ID_chkKeepSorted 3440
#define ID_fraExtrasWindow 3441
#define ID_chkShowAtStart 3442
#define ID_chkSearchBox 3443
#define ID_chkAskPassword 3444
