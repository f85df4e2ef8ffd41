#pragma once

/* Numbers of the stand-in's controls and commands. Read by the resource compiler as well. */

#define ID_tree 11
#define ID_list 12
#define ID_toolbar 13
#define ID_status 14
#define ID_progress 15

#define ID_ask 101
#define ID_dialog 102
#define ID_disabled 103
#define ID_fill 104

#define ID_edit 201
#define ID_check 202
#define ID_combo 203
#define ID_listbox 204
#define ID_tabs 205
