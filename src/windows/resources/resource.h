// Control IDs of the dialogs, for templates, toolkit and whoever drives the windows from outside.
// ID_<dialog>_<control>; one hundred per dialog. A template stands in dialogs/ under its dialog's name.
#pragma once

// Window class of every dialog.
#define QX_DIALOG_CLASS "QXDialog"

#define IDI_PROGRAM 1

#define ID_frmUserAuthentication_lblLabel1 1001
#define ID_frmUserAuthentication_cmbUserName 1002
#define ID_frmUserAuthentication_lblLabel2 1003
#define ID_frmUserAuthentication_txtPassword 1004
#define ID_frmUserAuthentication_cmdOK 1005
#define ID_frmUserAuthentication_cmdCancel 1006

#define ID_frmMainMenu_cmdMenu0 1101
#define ID_frmMainMenu_cmdMenu1 1102
#define ID_frmMainMenu_cmdMenu2 1103
#define ID_frmMainMenu_cmdEnd 1104

#define ID_frmBackup_fraBackup 1201
#define ID_frmBackup_chkPatientData 1202
#define ID_frmBackup_chkSystemData 1203
#define ID_frmBackup_chkLogData 1204
#define ID_frmBackup_chkDeleteLog 1205
#define ID_frmBackup_chkReportData 1206
#define ID_frmBackup_cmdStart 1207
#define ID_frmBackup_cmdCancel 1208

#define ID_frmSelectFolder_lblLabel1 1301
#define ID_frmSelectFolder_txtFolder 1302
#define ID_frmSelectFolder_cmdRefer 1303
#define ID_frmSelectFolder_lblLabel2 1304
#define ID_frmSelectFolder_txtCapacity 1305
#define ID_frmSelectFolder_cmdOK 1306
#define ID_frmSelectFolder_cmdCancel 1307

#define ID_frmRestore_fraSystem 1401
#define ID_frmRestore_lblAppVersion 1402
#define ID_frmRestore_lblAppVersionValue 1403
#define ID_frmRestore_lblBackupDate 1404
#define ID_frmRestore_lblBackupDateValue 1405
#define ID_frmRestore_fraItem 1406
#define ID_frmRestore_chkPatientData 1407
#define ID_frmRestore_LblPatient 1408
#define ID_frmRestore_LblSetupInfo 1409
#define ID_frmRestore_chkMenuData 1410
#define ID_frmRestore_LblMenu 1411
#define ID_frmRestore_chkSystemData 1412
#define ID_frmRestore_LblSystem 1413
#define ID_frmRestore_chkUserData 1414
#define ID_frmRestore_LblUser 1415
#define ID_frmRestore_chkExplanationData 1416
#define ID_frmRestore_LblExplanation 1417
#define ID_frmRestore_chkReportSetData 1418
#define ID_frmRestore_LblReportSet 1419
#define ID_frmRestore_chkReportData 1420
#define ID_frmRestore_LblReport 1421
#define ID_frmRestore_chkIPCounter 1422
#define ID_frmRestore_lblIPCounter 1423
#define ID_frmRestore_cmdStart 1424
#define ID_frmRestore_cmdCancel 1425

#define ID_frmMaintenance_lblLabel1 1501
#define ID_frmMaintenance_lblLabel2 1502
#define ID_frmMaintenance_txtPatientCount 1503
#define ID_frmMaintenance_lblError1 1504
#define ID_frmMaintenance_lblLabel3 1505
#define ID_frmMaintenance_txtStudyCount 1506
#define ID_frmMaintenance_lblError2 1507
#define ID_frmMaintenance_lblLabel4 1508
#define ID_frmMaintenance_txtUserCount 1509
#define ID_frmMaintenance_lblError3 1510
#define ID_frmMaintenance_lblLabel5 1511
#define ID_frmMaintenance_Frame1 1512
#define ID_frmMaintenance_Option1 1513
#define ID_frmMaintenance_Option2 1514
#define ID_frmMaintenance_Frame2 1515
#define ID_frmMaintenance_Option3 1516
#define ID_frmMaintenance_Option4 1517
#define ID_frmMaintenance_txtCollectRange 1518
#define ID_frmMaintenance_lblLabel7 1519
#define ID_frmMaintenance_cmdStart 1520
#define ID_frmMaintenance_cmdCancel 1521
