/* The trains that leave a station in the next hour, from a host in C.
 *
 *     board STATION-FOLDER STATION-NAME YYYY-MM-DD HH:MM
 *
 * The folder holds stazione.db, such as `ravelinox import` writes. The class must be registered:
 * see docs/automation.md. Texts are ASCII here; a host with others converts them to UTF-16. */
#include <inttypes.h>
#include <ravelinox/cmdl1.h>
#include <ravelinox/create_object.h>

static const rlx_guid cmdl1_id = RLX_CMDL1_ID;
static const rlx_guid error_info_id = {
    0x1CF2B120, 0x547D, 0x101B, {0x8E, 0x65, 0x08, 0x00, 0x2B, 0x2B, 0xD1, 0x19}};
static const rlx_guid no_id;

static rlx_text text_of(const char* ascii) {
  const size_t length = strlen(ascii);
  rlx_text text = rlx_text_new(NULL, (uint32_t)length);
  for (size_t at = 0; text && at < length; ++at) text[at] = (unsigned char)ascii[at];
  return text;
}

static void print_text(const uint16_t* text, FILE* out) {
  for (uint32_t at = 0; at < rlx_text_length(text); ++at)
    fputc(text[at] < 128 ? (int)text[at] : '?', out);
}

static rlx_variant number(int32_t value) {
  rlx_variant variant = {.kind = RLX_I4, .value = {.int32 = value}};
  return variant;
}

static rlx_variant text(const char* ascii) {
  rlx_variant variant = {.kind = RLX_TEXT, .value = {.text = text_of(ascii)}};
  return variant;
}

/* Ends the program with a failure's sentence. */
static void fail(const char* member, rlx_result code, const uint16_t* sentence) {
  fprintf(stderr, "board: %s: 0x%08" PRIX32 ": ", member, (uint32_t)code);
  print_text(sentence, stderr);
  fputc('\n', stderr);
  exit(1);
}

static rlx_cmdl1* engine; /* the object that this program is about */

/* A slot's result is a code alone: the object knows the sentence. */
static void check(const char* slot, rlx_result code) {
  void* found = NULL;
  rlx_text sentence = NULL;
  if (code >= 0) return;
  if (engine->slots->dispatch.QueryInterface((rlx_dispatch*)engine, &error_info_id, &found) >= 0) {
    rlx_error_info* failure = found;
    failure->slots->GetDescription(failure, &sentence);
  }
  fail(slot, code, sentence);
}

/* Calls a slot of the engine's. */
#define CALL(slot, ...) check(#slot, engine->slots->slot(__VA_ARGS__))

/* Calls a member by its name and clears the arguments, which stand from the first to the last:
 * connections, recordsets and fields have names alone. */
static rlx_variant call(rlx_dispatch* object, const char* name, uint16_t use, uint32_t count,
                        const rlx_variant* values) {
  rlx_variant result = {0}, reversed[8];
  rlx_exception failure = {0};
  uint32_t wrong = 0;
  int32_t member = RLX_ID_UNKNOWN;
  rlx_text member_name = text_of(name);
  object->slots->GetIDsOfNames(object, &no_id, &member_name, 1, 0, &member);
  rlx_text_free(member_name);
  for (uint32_t at = 0; at < count; ++at) reversed[count - 1 - at] = values[at];
  rlx_arguments arguments = {reversed, NULL, count, 0};
  const rlx_result code =
      object->slots->Invoke(object, member, &no_id, 0, use, &arguments, &result, &failure, &wrong);
  for (uint32_t at = 0; at < count; ++at) rlx_variant_clear(&reversed[at]);
  if (code < 0)
    fail(name, code == RLX_DISP_E_EXCEPTION ? failure.result : code, failure.description);
  return result;
}

static rlx_variant run(rlx_dispatch* object, const char* method) {
  return call(object, method, RLX_USE_METHOD, 0, NULL);
}

static rlx_variant get(rlx_dispatch* object, const char* property) {
  return call(object, property, RLX_USE_GET, 0, NULL);
}

/* The number in a column of a recordset's current row. */
static int32_t field(rlx_dispatch* rows, int32_t position) {
  const rlx_variant place = number(position);
  rlx_variant column = call(rows, "Fields", RLX_USE_GET, 1, &place);
  const rlx_variant value = get(column.value.dispatch, "Value");
  rlx_variant_clear(&column);
  return value.value.int32;
}

static void print_train(int32_t train, int32_t leaves) {
  rlx_variant delay = {0}, way = {0};
  CALL(RicavaRitardo, engine, &train, &leaves, NULL, &delay);
  CALL(CorsaTreno, engine, &train, &way);
  const int32_t second = leaves % 86400;
  printf("%02" PRId32 ":%02" PRId32 "  %8" PRId32 "  ", second / 3600, second / 60 % 60, train);
  print_text(delay.value.text, stdout);
  printf("  ");
  print_text(way.value.text, stdout);
  putchar('\n');
  rlx_variant_clear(&delay);
  rlx_variant_clear(&way);
}

/* Sessions, own station, the day's timetable; the timestamp of now. */
static int32_t start(char** argument) {
  int year, month, day, hour, minute;
  char path[4096];
  if (sscanf(argument[3], "%4d-%2d-%2d", &year, &month, &day) != 3 ||
      sscanf(argument[4], "%2d:%2d", &hour, &minute) != 2 || month < 0 || day < 0 || hour < 0 ||
      minute < 0) {
    fprintf(stderr, "board: the moment is YYYY-MM-DD HH:MM\n");
    exit(2);
  }
  snprintf(path, sizeof path, "%s\\stazione.db", argument[1]);
  rlx_variant file = text(path), station = text(argument[2]), nothing = {0};
  CALL(put_DB_stazione, engine, file);
  CALL(Connetti_DBstazione_DLL, engine);
  CALL(Imposta_proprieta_pds, engine);
  CALL(Connetti_DBlinea_DLL, engine);
  CALL(put_Nome_PdS, engine, station);
  const uint8_t zero = 0, of_month = (uint8_t)day, of_year = (uint8_t)month;
  const int16_t anno = (int16_t)year;
  int32_t midnight = 0;
  CALL(MkTime, engine, &zero, &zero, &zero, &of_month, &of_year, &anno, &midnight);
  const int32_t now = midnight + hour * 3600 + minute * 60;
  CALL(put_StartTime, engine, now);
  CALL(put_Global_ProbabilitaSoppressione, engine, 50); /* one in fifty; 0 suppresses all */
  CALL(put_Global_Puntualita, engine, 300);
  CALL(Inzializza_Orario, engine, &now, &midnight, &nothing);
  rlx_variant_clear(&file);
  rlx_variant_clear(&station);
  return now;
}

/* Trains and their times of departure, read whole before the slot serves other questions. */
static int departures(const char* station, int32_t now, int32_t (*found)[2], int most) {
  char statement[512];
  int count = 0;
  snprintf(statement, sizeof statement,
           "SELECT Numero, Effettiva_partenza FROM circolazione WHERE Stazione = '%s'"
           " AND Effettiva_partenza >= %" PRId32 " AND Effettiva_partenza < %" PRId32
           " ORDER BY Effettiva_partenza",
           station, now, now + 3600);
  const rlx_variant source = text(statement);
  rlx_dispatch* rows = NULL;
  CALL(get_DLLRS3, engine, &rows);
  call(rows, "Open", RLX_USE_METHOD, 1, &source);
  for (; count < most && get(rows, "EOF").value.int16 == 0; ++count) {
    found[count][0] = field(rows, 0);
    found[count][1] = field(rows, 1);
    run(rows, "MoveNext");
  }
  run(rows, "Close");
  rows->slots->Release(rows);
  return count;
}

int main(int argc, char** argv) {
  int32_t found[100][2];
  void* object = NULL;
  if (argc != 5) {
    fprintf(stderr, "usage: board STATION-FOLDER STATION-NAME YYYY-MM-DD HH:MM\n");
    return 2;
  }
  if (rlx_create_object("Ravelinox.cmdl1", &cmdl1_id, &object) < 0) {
    fprintf(stderr, "board: Ravelinox.cmdl1 is not registered, or its library does not load\n");
    return 1;
  }
  engine = object;
  const int32_t now = start(argv);
  const int count = departures(argv[2], now, found, 100);
  for (int at = 0; at < count; ++at) print_train(found[at][0], found[at][1]);
  CALL(Disconnetti_DB, engine);
  engine->slots->dispatch.Release((rlx_dispatch*)engine);
  return 0;
}
