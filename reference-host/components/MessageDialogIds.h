/* The window of Tarsus.MessageDialog: its class and its controls. Shared with the resource
 * compiler and with programs that drive the window, so plain definitions only. */
#ifndef COMPONENTS_MESSAGE_DIALOG_IDS_H
#define COMPONENTS_MESSAGE_DIALOG_IDS_H

#define TARSUS_MESSAGE_CLASS "TarsusMessage"

#define TARSUS_MESSAGE_TEMPLATE 100

/* The consent button of a question is the OK button of a plain message. The numbers are those
 * of IDOK and IDCANCEL, so that Enter and Esc find their buttons. */
#define TARSUS_MESSAGE_CONSENT 1
#define TARSUS_MESSAGE_REFUSE 2
#define TARSUS_MESSAGE_TEXT 101
#define TARSUS_MESSAGE_ID 102
#define TARSUS_MESSAGE_ICON 103
#define TARSUS_MESSAGE_LINE 104

#endif
