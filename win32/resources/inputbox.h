/* Control ids of the input box. */
#define IDC_INPUTBOX_PROMPT 1001
#define IDC_INPUTBOX_TEXT 1002
