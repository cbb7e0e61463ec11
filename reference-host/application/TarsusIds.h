/* The host application's window: its class, controls and commands. Shared with the resource
 * compiler and with programs that drive the window, so plain definitions only. */
#ifndef APPLICATION_TARSUS_IDS_H
#define APPLICATION_TARSUS_IDS_H

#define TARSUS_MAIN_CLASS "TarsusMain"

#define TARSUS_MAIN_TEMPLATE 100
#define TARSUS_MAIN_MENU 101

#define TARSUS_NAME 201
#define TARSUS_VERSION 202
#define TARSUS_STATE 203
#define TARSUS_BACKUP 204
#define TARSUS_LINE 205
#define TARSUS_EXIT 301

#endif
