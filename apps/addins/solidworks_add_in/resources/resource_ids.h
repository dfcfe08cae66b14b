/* Ids of the resources, for the resource compiler and for C++. Macros, because the resource compiler does not
   understand C++ constants. */
#pragma once

/* Texts, in English (United Kingdom), simplified and traditional Chinese. */
#define IDS_EXTRACT_PROPERTIES_QUESTION 1
#define IDS_EXTRACT_PROPERTIES 2
#define IDS_BACKFILL_PROPERTIES_QUESTION 3
#define IDS_BACKFILL_PROPERTIES 4
#define IDS_BACKFILL_COMPLETED 6
#define IDS_LOAD_MODEL 7
#define IDS_NO_MODEL_LOADED 8
#define IDS_NOT_A_DRAWING 9
#define IDS_REPLACEMENT_FAILED 10
#define IDS_REPLACEMENT_NOT_SUPPORTED 11
#define IDS_LOGIN_FAILED 133 /* English only */
#define IDS_FILE_IS_OPENING 265
#define IDS_CLIENT_DID_NOT_ANSWER 266
/* Labels of the error box. */
#define IDS_ERROR_CODE 300
#define IDS_LOG_FOLDER 301
#define IDS_APPLICATION_TITLE 57344

/* Icon strips: sixteen icons of 32 by 32 pixels side by side. The command group uses the first. */
#define IDB_TOOLBAR 254
#define IDB_TOOLBAR_MONOCHROME 255

/* Registration scripts, of the type REGISTRY. */
#define IDR_SOLIDWORKS_ADD_IN 101
#define IDR_BITMAP_HANDLER 111

#define IDR_TYPE_LIBRARY 1
