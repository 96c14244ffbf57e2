// The options' meanings, value forms and defaults, in option-number order.
#include "dist/option_help.h"

namespace {

// The date forms of the time locale (LC_TIME), shared by the three options
// that take a date.
#define SW_DATE_FORMS                                                                      \
  "The date is written in the time locale's form: mm/dd/yyyy in the C locale and English " \
  "(dd/mm/yyyy in en_GB, en_AU, en_NZ, en_IE and en_IN, dd.mm.yyyy in German), then "      \
  "HH:MM:SS or HH:MM in local time, for example \"03/31/2025 18:30:00\" (quote it: it "    \
  "holds a blank)."

const OptionHelp kOptionHelp[] = {
    {OPT_AFTER, "date",
     "Only what lies after this time: images backed up after it, notifications made after "
     "it, the SLP work of images backed up after it. " SW_DATE_FORMS
     " The time may be left out: the date alone means 00:00:00 of that day. With active, "
     "cancel and inactive the date must not lie before 1970. Not with -before.",
     "no lower bound"},
    {OPT_ALL_PENDING_IMAGES, nullptr,
     "Every copy waiting for import confirmation, however recently it was replicated, instead "
     "of only those older than IMPORT_CONF_THRESHOLD of the configuration.",
     "only copies older than the threshold"},
    {OPT_ARG1, "text",
     "The first argument handed to the subsystem's session; takes the place of -policy.",
     "the -policy value, else none"},
    {OPT_ARG2, "text",
     "The second argument handed to the subsystem's session; takes the place of -schedule.",
     "the -schedule value, else none"},
    {OPT_ARG3, "number",
     "The third argument handed to the subsystem's session; 0 hands on -schedtype instead.",
     "the -schedtype value (-1 when that is not given either)"},
    {OPT_B, nullptr, "Brief output: one line per record with its key fields only.",
     "the short form (-l)"},
    {OPT_BACKUPID, "id", "The backup id of one image, as the listings print it (client_time).",
     "every image"},
    {OPT_BEFORE, "date",
     "Only what lies before this time; the counterpart of -after. " SW_DATE_FORMS
     " The time may be left out: the date alone means 00:00:00 of that day. With active, "
     "cancel and inactive the date must not lie before 1970. Not with -after.",
     "no upper bound"},
    {OPT_BYDATE, nullptr, "Groups the completion report by day instead of by client.",
     "grouped by client"},
    {OPT_CLIENT, "name", "Only the images of this client (the backed-up host).", "every client"},
    {OPT_COPY_INACTIVE, nullptr,
     "Only copies whose SLP processing is inactive. One state filter at most.",
     "copies in any state"},
    {OPT_COPY_INCOMPLETE, nullptr,
     "Only copies whose SLP processing has not finished. One state filter at most.",
     "copies in any state"},
    {OPT_COPY_STATE, "number",
     "Only copies in this copy state (the numbers the user form explains, for example 3 "
     "complete); the low 16 bits count. One state filter at most.",
     "copies in any state"},
    {OPT_COPY_TYPE, "type", "Only copies of this type: a name below, or a number taken as it is.",
     "every type"},
    {OPT_DAYS, "number", "How many days the completion report covers, counting back from today.",
     "30"},
    {OPT_DESTINATION, "name",
     "Only copies made to this destination (storage unit or storage unit group). With cancel "
     "it asks first, since the copies that read from that destination are cancelled too.",
     "every destination"},
    {OPT_DF, "form", "The form of the dump: r readable, j JSON, l as in the service's log file.",
     "r"},
    {OPT_DOPTS, "text",
     "Options of the dump, handed to the SLP service unchanged; what it understands depends "
     "on the subsystem.",
     "none"},
    {OPT_DP, "name", "The disk pool of the volume.", "none"},
    {OPT_DT, "number", "The disk type of the volume, as the disk service numbers it.", "0"},
    {OPT_DURATION, "hours",
     "How long the SLP work stays inactive, in whole hours from now (0: it is active again "
     "at once). Not with -reactivation_time or -backupid.",
     "inactive until reactivated with active"},
    {OPT_EXPID, "number", "The id of an expiration run, as diskfull reports it.", "0"},
    {OPT_FORCE, nullptr,
     "Cancels at once: skips the list of the images that would be expired and both questions "
     "before the cancellation (-nowarn does not skip those).",
     "list and ask"},
    {OPT_FRAG_STATE, "number",
     "Only fragments in this fragment state (for example 3 expired); the low 16 bits count. "
     "-state is another spelling. One state filter at most.",
     "fragments in any state"},
    {OPT_HELP, nullptr,
     "Writes the operation's usage and ends the run with status 0; without an operation, the "
     "general usage.",
     nullptr},
    {OPT_HOSTNAME, "name", "Only notifications exchanged with this master server.", "every host"},
    {OPT_IMAGE_INACTIVE, nullptr,
     "Only images whose SLP processing is inactive. One state filter at most.",
     "images in any state"},
    {OPT_IMAGE_INCOMPLETE, nullptr,
     "Only images whose SLP processing has not finished. One state filter at most.",
     "images in any state"},
    {OPT_IMAGE_STATE, "number",
     "Only images in this SLP state (1 not started, 2 in process, 3 complete, ...). One state "
     "filter at most.",
     "images in any state"},
    {OPT_INPUT, nullptr,
     "Only the notifications this master received. With -output, or with neither, both "
     "kinds, received first.",
     "both kinds"},
    {OPT_JOBID, "number", "Only the copies made by this job.", "every job"},
    {OPT_JSON, nullptr,
     "JSON output, indented. list_import_conf and list_import_notify write one JSON document; "
     "listwg writes one document per work group, one after the other, which jq reads as a "
     "stream: \"cyclectl listwg -json | jq -r .Policy\" prints each group's policy, and "
     "\"jq -s .\" gathers them into one array.",
     "the short form (-l)"},
    {OPT_JSON_COMPACT, nullptr,
     "Like -json, each document on one line (listwg: one line per work group, for line "
     "tools and jq alike).",
     "the short form (-l)"},
    {OPT_KEY, "number", "Only the work group with this key.", "every work group"},
    {OPT_L, nullptr, "Short output: one line per record with every field, for scripts.",
     "this form"},
    {OPT_LIFECYCLE, "name",
     "Only the images (or SLP work) of this storage lifecycle policy. Not with "
     "-lifecycle_only.",
     "every lifecycle"},
    {OPT_LIFECYCLE_ONLY, nullptr,
     "Only images that a storage lifecycle policy manages. Not with -lifecycle.",
     "managed and unmanaged images"},
    {OPT_LIST_IMPORT_FRAGS, nullptr, "The same as the operation word list_import_frags.", nullptr},
    {OPT_M, "name",
     "The master server whose catalog records, or whose SLP service, the operation uses.",
     "the first MASTER_SERVER of the configuration"},
    {OPT_MEDIAID, "id", "The media id of a volume (the disk or tape volume).", "every volume"},
    {OPT_MEDIASERVER, "name", "The media server of a volume.", "every media server"},
    {OPT_NOWARN, nullptr,
     "Skips the confirmation questions: of dropwg and remove_exp, and the question of cancel "
     "-destination about the copies that read from the destination (the questions before a "
     "cancellation stay; -force skips them). Nothing is read from standard input then.",
     "ask and read the answer from standard input"},
    {OPT_NTYPE, "type", "Which notifications: all, conf (confirmations) or error.", "all"},
    {OPT_OUTPUT, nullptr,
     "Only the notifications this master sent. With -input, or with neither, both kinds.",
     "both kinds"},
    {OPT_POLICY, "name",
     "Only the images of this backup policy; one_session hands it to the subsystem as its "
     "first argument.",
     "every policy"},
    {OPT_Q, nullptr, "With help: lists the internal operations too.", "the public ones only"},
    {OPT_REACTIVATION_TIME, "date",
     "When the inactivated SLP work becomes active again. " SW_DATE_FORMS
     " Here the time is required. Not with -duration or -backupid.",
     "inactive until reactivated with active"},
    {OPT_RT, "types",
     "Which records to list: I images, IC and their copies, ICF and their fragments, ICFS "
     "and their snapshots (C, F and S are short for IC, ICF and ICFS).",
     "ICF"},
    {OPT_SCHEDTYPE, "number",
     "The schedule type handed to the subsystem's session as its third argument.", "-1"},
    {OPT_SCHEDULE, "name", "The schedule handed to the subsystem's session as its second argument.",
     "none"},
    {OPT_SINCETIME, "seconds", "Only replicas made since this time, in seconds since the epoch.",
     "0, every replica"},
    {OPT_SLPINDEX, "number", "The SLP operation to redo: its position in the lifecycle, from 1.",
     "nothing: the option is required"},
    {OPT_STORAGESERVER, "name", "The storage server of a volume.", "every storage server"},
    {OPT_STSSUBTYPE, "name",
     "The storage server's subtype (its disk server type, for example StashDedup).", "none"},
    {OPT_STYPE, "name", "Only disk volumes of this server type (for example BasicDisk).",
     "every type"},
    {OPT_SUBSYS, "subsystem",
     "The SLP service's subsystem: an abbreviation below, case counting, or its number from "
     "0 to 17.",
     "null (0)"},
    {OPT_T, nullptr,
     "Also prints the report's selection, each day's time range and the statements run, to "
     "see why a client shows no date.",
     "no trace"},
    {OPT_TARGET_DOMAIN, "name",
     "Only copies replicated to this target domain (master server domain).", "every target domain"},
    {OPT_TARGET_INFO, "text",
     "Only the replication records with this target information (the target's volume).",
     "all of the machine's records"},
    {OPT_TARGET_MACHINE, "name", "The replication target machine whose records are removed.",
     "nothing: the option is required"},
    {OPT_TEST_IMPORT_FRAGS, "file",
     "A file of KEY = VALUE lines describing fragments to queue for import, as a test: "
     "MEDIA_SERVER, STORAGE_SERVER, SERVER_TYPE, LSU_NAME, ORIGIN_MASTER_SERVER, SLP_NAME and "
     "one STS_IMAGE line per fragment.",
     nullptr},
    {OPT_TESTHOOK, nullptr, "The same as the operation word testhook.", nullptr},
    {OPT_TOTALCAP, "bytes", "The volume's total capacity.", "0"},
    {OPT_U, nullptr, "User output: each record as labelled lines, numbers explained, for reading.",
     "the short form (-l)"},
    {OPT_USEDCAP, "bytes", "The capacity in use on the volume.", "0"},
    {OPT_USEDSPACE, "bytes", "The space in use on the volume.", "0"},
    {OPT_VERSION, "number", "Only this version of the storage lifecycle policy.", "every version"},
    {OPT_VOLUMEID, "id", "The volume id, for volumes that have one.", "none"},
    {OPT_WAIT, nullptr, "No longer needed: a notice says so and the run goes on.", nullptr},
};

#undef SW_DATE_FORMS

}  // namespace

const OptionHelp* FindOptionHelp(option_e option) {
  for (const OptionHelp& help : kOptionHelp) {
    if (help.option == option) return &help;
  }
  return nullptr;
}
