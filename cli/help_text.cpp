#include "cli/help_text.h"

namespace lintara::cli {
namespace {

#define LINTARA_EDITING_STATUSES                                           \
    "\nExit status:\n"                                                     \
    "  0  done\n"                                                          \
    "  1  --check found changes\n"                                         \
    "  2  wrong usage, or a name that the project does not have\n"         \
    "  3  the project could not be read or written; nothing was changed\n" \
    "  4  some procedures were skipped and --strict was given; the others were edited\n"

#define LINTARA_READING_STATUSES                                   \
    "\nExit status:\n"                                             \
    "  0  done\n"                                                  \
    "  2  wrong usage, or a name that the project does not have\n" \
    "  3  the project could not be read\n"

#define LINTARA_SCOPE                                                                               \
    "\nHow the scope works:\n"                                                                      \
    "  Without a scope, the whole project is edited. --component and --procedure narrow it; both\n" \
    "  may be given several times, and in their patterns * stands for any characters and ? for\n"   \
    "  one. Letter case does not matter. In a group of projects, Project.Component names one.\n"    \
    "  --at takes the procedure under a caret; its line is the one that the IDE shows.\n"

constexpr std::string_view InsertFooter =
    "\nExamples:\n"
    "  lintara insert Invoicing.vbp --line-numbers\n"
    "      Number every procedure of the project, in place.\n"
    "  lintara insert Invoicing.vbp --line-numbers --diff\n"
    "      Show what that would change, and change nothing.\n"
    "  lintara insert Invoicing.vbp --line-numbers --output build/numbered\n"
    "      Leave the sources alone and write a numbered copy: for pipelines that number only what\n"
    "      they ship.\n"
    "  lintara insert Invoicing.vbp --line-numbers --component 'frm*' --procedure '*_Click'\n"
    "      Number the click events of all forms.\n"
    "  lintara insert Totals.bas --line-numbers --at Totals:42 --base 20000 --step 10\n"
    "      Number the procedure that holds line 42 from 20000 in steps of 10.\n" LINTARA_SCOPE
    "\nSkipped procedures:\n"
    "  A procedure whose code numbering could harm is left as it was, with a warning that says why:\n"
    "  range-mismatch     its beginning and end cannot be told for certain\n"
    "  already-numbered   it has numbers; --renumber removes them and numbers anew\n"
    "  foreign-numbers    it has numbers without a colon, as other tools write them\n"
    "  jump-target        it jumps to a number that would be written\n"
    "  numbering-limit    the step leaves too few numbers to find them again\n"
    "  duplicate-procedure, name-clash   only the first of several of one name can be reached\n"
    "  --exact turns these checks off.\n" LINTARA_EDITING_STATUSES;

constexpr std::string_view RemoveFooter =
    "\nExamples:\n"
    "  lintara remove Invoicing.vbp --line-numbers\n"
    "      Take the numbers out of every procedure of the project again.\n"
    "  lintara remove Invoicing.vbp --line-numbers --check\n"
    "      Is any procedure numbered? Status 1 says yes; nothing is written.\n"
    "  lintara remove exported/ --recursive --line-numbers --backup .bak\n"
    "      Treat the modules of a folder as one project, and keep the originals beside them.\n" LINTARA_SCOPE
    "\nSkipped procedures:\n"
    "  A procedure whose code removal could harm is left as it was, with a warning that says why:\n"
    "  range-mismatch     its beginning and end cannot be told for certain\n"
    "  number-width       it has numbers that are not five digits, a colon and a blank\n"
    "  jump-target        GoTo, GoSub, Resume, On ... GoTo or If ... Then jump to one of its numbers\n"
    "  duplicate-procedure, name-clash   only the first of several of one name can be reached\n"
    "  --exact turns these checks off.\n" LINTARA_EDITING_STATUSES;

constexpr std::string_view ListFooter =
    "\nExamples:\n"
    "  lintara list Invoicing.vbp\n"
    "      Projects, components and members, each with its kind and its lines.\n"
    "  lintara list Everything.vbg --json\n"
    "      The same of a group of projects, for programs.\n"
    "\nLines are those that the IDE shows: the head of a component's file does not "
    "count.\n" LINTARA_READING_STATUSES;

constexpr std::string_view MemberFooter =
    "\nExample:\n"
    "  lintara member Invoicing.vbp --at Totals:42\n"
    "      Which member holds line 42 of the component Totals, and of what kind is it?\n"
    "\nThe line is the one that the IDE shows. 'type' looks at the first line of the member's block,\n"
    "which may be a comment, 'typeEx' at its header: they can differ.\n" LINTARA_READING_STATUSES;

constexpr std::string_view RecoverFooter =
    "\nExample:\n"
    "  lintara recover Invoicing.vbp\n"
    "      Finish or undo what a run that was interrupted while saving has left. Every command does\n"
    "      this by itself before it reads the project.\n" LINTARA_READING_STATUSES;

}  // namespace

std::string_view ProgramDescription() {
    return "Line numbers for classic BASIC projects on disk: put them in, and bring every byte back.";
}

std::string_view ProgramFooter() {
    return "\nPATH is a project (.vbp), a group of projects (.vbg), a folder of exported modules, or one\n"
           "component (.bas, .cls, .frm, .ctl, .pag, .dob, .dsr).\n"
           "\nExamples:\n"
           "  lintara list Invoicing.vbp\n"
           "  lintara insert Invoicing.vbp --line-numbers --diff\n"
           "  lintara insert Invoicing.vbp --line-numbers\n"
           "  lintara remove Invoicing.vbp --line-numbers\n"
           "\n'lintara COMMAND --help' explains one command, with examples.\n" LINTARA_EDITING_STATUSES;
}

std::string_view VerbName(Verb verb) {
    switch (verb) {
        case Verb::List:
            return "list";
        case Verb::Insert:
            return "insert";
        case Verb::Remove:
            return "remove";
        case Verb::Member:
            return "member";
        case Verb::Recover:
            return "recover";
    }
    return "";
}

std::string_view VerbDescription(Verb verb) {
    switch (verb) {
        case Verb::List:
            return "Show projects, components and members";
        case Verb::Insert:
            return "Insert line numbers into procedures";
        case Verb::Remove:
            return "Remove line numbers from procedures";
        case Verb::Member:
            return "Tell the member under a caret";
        case Verb::Recover:
            return "Finish or undo a save that was interrupted";
    }
    return "";
}

std::string_view VerbFooter(Verb verb) {
    switch (verb) {
        case Verb::List:
            return ListFooter;
        case Verb::Insert:
            return InsertFooter;
        case Verb::Remove:
            return RemoveFooter;
        case Verb::Member:
            return MemberFooter;
        case Verb::Recover:
            return RecoverFooter;
    }
    return "";
}

}  // namespace lintara::cli
