// Paragraphs that the help of several commands shares. They are macros because the help of a command is one
// literal, put together from its own paragraphs and these.
#pragma once

#define LINTARA_FAULT_STATUS                                                                                \
    "  5  lintara noticed a fault of its own, and wrote nothing; where it keeps what led to the fault is\n" \
    "     told on standard error\n"

#define LINTARA_EDITING_STATUSES                                                                       \
    "\nExit status:\n"                                                                                 \
    "  0  done\n"                                                                                      \
    "  1  --check found changes\n"                                                                     \
    "  2  wrong usage, or a name that the project does not have\n"                                     \
    "  3  the project could not be read or written; nothing was changed, but with --keep-going what\n" \
    "     could be read\n"                                                                             \
    "  4  some procedures were skipped and --strict was given; the others were "                       \
    "edited\n" LINTARA_FAULT_STATUS

#define LINTARA_READING_STATUSES                                   \
    "\nExit status:\n"                                             \
    "  0  done\n"                                                  \
    "  2  wrong usage, or a name that the project does not have\n" \
    "  3  the project could not be read\n"

#define LINTARA_SCOPE                                                                                  \
    "\nHow the scope works:\n"                                                                         \
    "  Without a scope, the whole project is edited. --component and --procedure narrow it; both\n"    \
    "  may be given several times, and in their patterns * stands for any characters and ? for\n"      \
    "  one. Letter case does not matter. In a group of projects, Project.Component names one.\n"       \
    "  --at takes the procedure under a caret; its line is the one that the IDE shows.\n"              \
    "  --exclude leaves components (frmOld) and procedures (frmMain.Form_Load) out. So does a\n"       \
    "  comment line in the code: ' lintara: skip above a procedure's header, or in the declarations\n" \
    "  for the whole component.\n"
