// The ids of the program's resources, controls and commands, shared by the resource compiler and
// the C++ code, hence only plain defines. Other processes see the ids of dialogs, controls and
// commands, so they must not change.
#pragma once

// Dialogs, menus and accelerators.
#define IDD_MAIN 100
#define IDD_HASH_TEXT 101
#define IDR_MAIN_MENU 102
#define IDR_ACCELERATORS 103
#define IDR_LIST_MENU 104

// Icons: the program's own, the toolbar's and the buttons', a dialog's, the result line's.
#define IDI_APP 1
#define IDI_ADD_FILES 10
#define IDI_ADD_FOLDER 11
#define IDI_VERIFY_FILE 12
#define IDI_HASH_TEXT 13
#define IDI_SAVE_CHECKSUMS 14
#define IDI_CLEAR_LIST 15
#define IDI_COPY 16
#define IDI_PASTE 17
#define IDI_LOOK_UP_ONLINE 18
#define IDI_OPEN_FOLDER 19
#define IDI_COMMAND_LINE_TOOL 20
#define IDI_GOOD 21
#define IDI_BAD 22
#define IDI_HINT 23
#define IDI_BUSY 24

// Controls of the main dialog.
#define IDC_TOOLBAR 1001
#define IDC_TOOLBAR_RULE 1002
#define IDC_ALGO_LABEL 1010
#define IDC_ALGO_MD5 1011
#define IDC_ALGO_SHA1 1012
#define IDC_ALGO_SHA256 1013
#define IDC_ALGO_SHA512 1014
#define IDC_ALGO_BLAKE3 1015
#define IDC_ALGO_MORE 1016
#define IDC_BANNER 1020
#define IDC_LIST 1021
#define IDC_EXPECTED_LABEL 1030
#define IDC_EXPECTED 1031
#define IDC_PASTE 1032
#define IDC_RESULT 1033
#define IDC_DETAILS 1040
#define IDC_COPY 1041
#define IDC_VIRUSTOTAL 1042
#define IDC_OPEN_FOLDER 1043
#define IDC_STATUS_TEXT 1050
#define IDC_PROGRESS 1051
#define IDC_CANCEL 1052
#define IDC_LINKS 1053

// Controls of the Hash Text dialog.
#define IDC_HT_INPUT 1101
#define IDC_HT_ENCODING 1102
#define IDC_HT_LINEBREAKS 1103
#define IDC_HT_ADD_EOL 1104
#define IDC_HT_RESULT 1105
#define IDC_HT_COPY 1106
#define IDC_HT_ENCODING_LABEL 1107
#define IDC_HT_LINEBREAKS_LABEL 1108
#define IDC_HT_INPUT_LABEL 1109

// Commands of the main menu, the toolbar and the accelerators.
#define ID_ADD_FILES 40001
#define ID_ADD_FOLDER 40002
#define ID_VERIFY_FILE 40003
#define ID_SAVE_CHECKSUMS 40004
#define ID_EXIT 40005
#define ID_COPY_HASHES 40010
#define ID_PASTE_EXPECTED 40011
#define ID_SELECT_ALL 40012
#define ID_REMOVE 40013
#define ID_CLEAR_LIST 40014
#define ID_HASH_TEXT 40015
#define ID_UPPERCASE 40020
#define ID_SHOW_LEGACY 40021
#define ID_INCLUDE_HIDDEN 40022
#define ID_CRLF 40023
#define ID_EXPLORER_MENU 40024
#define ID_SEND_TO 40025
#define ID_HELP_ONLINE 40030
#define ID_WEBSITE 40031
#define ID_ABOUT 40032
#define ID_PROGRAM_FOLDER 40033
#define ID_CLI_TOOL 40034

// Commands of the list's context menu.
#define ID_CTX_COPY_LINE 40101
#define ID_CTX_COPY_ALL 40102
#define ID_CTX_OPEN_FOLDER 40103
#define ID_CTX_REMOVE 40104
#define ID_CTX_VIRUSTOTAL 40105
#define ID_CTX_COMPARE 40106
#define ID_CTX_COPY_PATH 40107

// Commands of menu entries created at run time. The AlgoId is added to the number.
#define ID_ALGO_FIRST 41000
#define ID_COPY_DIGEST_FIRST 41100
