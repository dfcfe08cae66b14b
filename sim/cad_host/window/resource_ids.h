// Numbers of texts, dialogs and their controls, for the resource compiler and for the sources.
#pragma once

// Menus.
#define IDS_FILE 100
#define IDS_INSERT 101
#define IDS_TOOLS 102
#define IDS_ADD_INS 103
#define IDS_HELP 104
#define IDS_VIEW 105
#define IDS_QUIRKS 106

// Commands of the host: the number of the command is that of its text; its hint follows after IDS_HINTS.
#define IDS_NEW_PART 120
#define IDS_NEW_ASSEMBLY 121
#define IDS_NEW_DRAWING 122
#define IDS_OPEN 123
#define IDS_SAVE 124
#define IDS_SAVE_AS 125
#define IDS_CLOSE 126
#define IDS_EXIT 127
#define IDS_INSERT_COMPONENT 128
#define IDS_ADD_PROPERTY 129
#define IDS_SELECT_FACE 130
#define IDS_SELECT_NOTHING 131
#define IDS_RECORD 132
#define IDS_STOP_RECORDING 133
#define IDS_RUN_SCRIPT 134
#define IDS_FAULT 135
#define IDS_REFRESH 136
#define IDS_ABOUT 137
#define IDS_HINTS 100  // the hint of a command has the command's number plus this one

// Panes.
#define IDS_NAME 300
#define IDS_STATE 301
#define IDS_TYPE 302
#define IDS_VALUE 303
#define IDS_CALL 304
#define IDS_RESULT 305
#define IDS_COMPONENTS 306
#define IDS_MATES 307
#define IDS_VIEWS 308
#define IDS_SUPPRESSED 309
#define IDS_REVISION 310
#define IDS_NO_DOCUMENT 311
#define IDS_PROPERTIES 312
#define IDS_FILTER 314
#define IDS_CLEAR 315
#define IDS_COPY 316
#define IDS_SELECTION 317
#define IDS_FACE 318
#define IDS_NOTHING 319
#define IDS_ADD 320
#define IDS_CHANGE 321
#define IDS_DELETE 322
#define IDS_SELECT 323
#define IDS_SUPPRESS 324
#define IDS_UNSUPPRESS 325
#define IDS_OPEN_COMPONENT 326
#define IDS_STANDARD 327
#define IDS_SHEET 328

// Kinds of journal entries, in the order of JournalFilter::Kind.
#define IDS_KIND_FIRST 340
#define IDS_KIND_MAIN 340
#define IDS_KIND_ALL 341
#define IDS_KIND_ADD_IN 342
#define IDS_KIND_HOST 343
#define IDS_KIND_EVENTS 344
#define IDS_KIND_NOTES 345
#define IDS_KIND_FAILURES 346

// Types of properties.
#define IDS_TYPE_TEXT 350
#define IDS_TYPE_NUMBER 351
#define IDS_TYPE_DATE 352
#define IDS_TYPE_YES_NO 353

// Messages.
#define IDS_TITLE 360
#define IDS_READY 361
#define IDS_RECORDING 362
#define IDS_SAVE_QUESTION 363
#define IDS_ABOUT_TEXT 364
#define IDS_FAULT_PROMPT 365
#define IDS_OK 366
#define IDS_CANCEL 367
#define IDS_MODEL_FILES 368
#define IDS_ALL_FILES 369
#define IDS_SCRIPT_FILES 370
#define IDS_SCRIPT_ENDED 371
#define IDS_SCRIPT_FAILED 372
#define IDS_NO_ADD_IN 373
#define IDS_NOT_A_NUMBER 374

#define IDD_PROPERTY 400
#define IDD_LINE 401

#define IDC_PROMPT 410
#define IDC_NAME 411
#define IDC_TYPE 412
#define IDC_VALUE 413
#define IDC_NAME_LABEL 414
#define IDC_TYPE_LABEL 415
#define IDC_VALUE_LABEL 416
