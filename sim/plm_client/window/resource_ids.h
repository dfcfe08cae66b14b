/* Numbers of the resources of the client's windows, for the resource compiler and for C++. Macros, because
   the resource compiler does not understand C++ constants. Those below 2000 are in panels/text_ids.h. */
#pragma once

#include "panels/text_ids.h"

#define IDS_MAIN_TITLE 2000
#define IDS_PANEL_TITLE 2001 /* %1: the command */
#define IDS_REQUEST 2003
#define IDS_ANSWER 2004
#define IDS_EDIT_FIRST 2005
#define IDS_SEND 2006
#define IDS_CANCEL 2007
#define IDS_ANSWER_CAN_BE_EDITED 2008
#define IDS_NO_SUCH_ROW 2009 /* %1: the text */
#define IDS_CHOOSE_FOLDER 2010

#define IDS_STATUS_SERVING 2020 /* %1: the pipe */
#define IDS_STATUS_HOSTS 2021   /* %1: how many are connected */
#define IDS_STATUS_USER 2022    /* %1: who is logged in */
#define IDS_STATUS_NOBODY 2023
#define IDS_STATUS_FAULT 2024 /* %1: what the next answer gets */
#define IDS_LOG_TIME 2025
#define IDS_LOG_COMMAND 2026
#define IDS_LOG_ANSWER 2027
#define IDS_LOG_WAITS 2028
#define IDS_LOG_NO_ANSWER 2029
#define IDS_LOG_HOST_GONE 2030
#define IDS_HEADING_LOG 2032

#define IDS_MENU_CLIENT 2040
#define IDS_MENU_REFRESH 2041
#define IDS_MENU_EXIT 2042
#define IDS_MENU_MISBEHAVE 2043
#define IDS_MENU_NEXT_ONLY 2044
#define IDS_MENU_ALWAYS 2045
#define IDS_MENU_UNCHECKED 2046
#define IDS_MENU_HELP 2047
#define IDS_MENU_ABOUT 2048
#define IDS_ABOUT 2049

#define IDS_FAULT_NONE 2060
#define IDS_FAULT_LATE 2061 /* %1: seconds */
#define IDS_FAULT_NEVER 2062
#define IDS_FAULT_GARBAGE 2063
#define IDS_FAULT_HALF_FRAME 2064
#define IDS_FAULT_DIE 2065
