/* The trains that leave a station in the next hour, from a host in C.
 *
 *     board STATION-FOLDER STATION-NAME YYYY-MM-DD HH:MM
 *
 * The folder holds stazione.db, such as `ravelinox import` writes. The class must be registered:
 * see docs/automation.md. Texts are ASCII here; a host with others converts them to UTF-16. */
#include <inttypes.h>
#include <ravelinox/create_object.h>

static const rlx_guid dispatch_id = {0x00020400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
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

/* Calls a member by its name and clears the arguments, which stand from the first to the last. A
 * failure ends the program with the engine's sentence. */
static rlx_variant call(rlx_dispatch* object, const char* name, uint16_t use, uint32_t count,
                        const rlx_variant* values) {
  rlx_variant result = {0}, reversed[8];
  rlx_exception failure = {0};
  uint32_t wrong = 0;
  int32_t member = RLX_ID_UNKNOWN, put = RLX_ID_PUT;
  rlx_text member_name = text_of(name);
  object->slots->GetIDsOfNames(object, &no_id, &member_name, 1, 0, &member);
  rlx_text_free(member_name);
  for (uint32_t at = 0; at < count; ++at) reversed[count - 1 - at] = values[at];
  rlx_arguments arguments = {reversed, &put, count, use == RLX_USE_PUT ? 1 : 0};
  const rlx_result code =
      object->slots->Invoke(object, member, &no_id, 0, use, &arguments, &result, &failure, &wrong);
  for (uint32_t at = 0; at < count; ++at) rlx_variant_clear(&reversed[at]);
  if (code >= 0) return result;
  fprintf(stderr, "board: %s: 0x%08" PRIX32 ": ", name,
          (uint32_t)(code == RLX_DISP_E_EXCEPTION ? failure.result : code));
  print_text(failure.description, stderr);
  fputc('\n', stderr);
  exit(1);
}

static rlx_variant run(rlx_dispatch* object, const char* method) {
  return call(object, method, RLX_USE_METHOD, 0, NULL);
}

static rlx_variant get(rlx_dispatch* object, const char* property) {
  return call(object, property, RLX_USE_GET, 0, NULL);
}

static void put(rlx_dispatch* object, const char* property, rlx_variant value) {
  call(object, property, RLX_USE_PUT, 1, &value);
}

/* The number in a column of a recordset's current row. */
static int32_t field(rlx_dispatch* rows, int32_t position) {
  const rlx_variant place = number(position);
  rlx_variant column = call(rows, "Fields", RLX_USE_GET, 1, &place);
  const rlx_variant value = get(column.value.dispatch, "Value");
  rlx_variant_clear(&column);
  return value.value.int32;
}

static void print_train(rlx_dispatch* engine, int32_t train, int32_t leaves) {
  const rlx_variant when[2] = {number(train), number(leaves)};
  rlx_variant delay = call(engine, "RicavaRitardo", RLX_USE_METHOD, 2, when);
  rlx_variant way = call(engine, "CorsaTreno", RLX_USE_METHOD, 1, when);
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
static int32_t start(rlx_dispatch* engine, char** argument) {
  int year, month, day, hour, minute;
  char path[4096];
  if (sscanf(argument[3], "%d-%d-%d", &year, &month, &day) != 3 ||
      sscanf(argument[4], "%d:%d", &hour, &minute) != 2) {
    fprintf(stderr, "board: the moment is YYYY-MM-DD HH:MM\n");
    exit(2);
  }
  snprintf(path, sizeof path, "%s\\stazione.db", argument[1]);
  put(engine, "DB_stazione", text(path));
  run(engine, "Connetti_DBstazione_DLL");
  run(engine, "Imposta_proprieta_pds");
  run(engine, "Connetti_DBlinea_DLL");
  put(engine, "Nome_PdS", text(argument[2]));
  const rlx_variant moment[6] = {number(0),   number(0),     number(0),
                                 number(day), number(month), number(year)};
  const int32_t midnight = call(engine, "MkTime", RLX_USE_METHOD, 6, moment).value.int32;
  const rlx_variant span[2] = {number(midnight + hour * 3600 + minute * 60), number(midnight)};
  put(engine, "StartTime", span[0]);
  put(engine, "Global_ProbabilitaSoppressione", number(50)); /* one in fifty; 0 suppresses all */
  put(engine, "Global_Puntualita", number(300));
  call(engine, "Inzializza_Orario", RLX_USE_METHOD, 2, span);
  return span[0].value.int32;
}

/* Trains and their times of departure, read whole before the slot serves other questions. */
static int departures(rlx_dispatch* engine, const char* station, int32_t now, int32_t (*found)[2],
                      int most) {
  char statement[512];
  int count = 0;
  snprintf(statement, sizeof statement,
           "SELECT Numero, Effettiva_partenza FROM circolazione WHERE Stazione = '%s'"
           " AND Effettiva_partenza >= %" PRId32 " AND Effettiva_partenza < %" PRId32
           " ORDER BY Effettiva_partenza",
           station, now, now + 3600);
  const rlx_variant source = text(statement);
  rlx_variant rows = get(engine, "DLLRS3");
  call(rows.value.dispatch, "Open", RLX_USE_METHOD, 1, &source);
  for (; count < most && get(rows.value.dispatch, "EOF").value.int16 == 0; ++count) {
    found[count][0] = field(rows.value.dispatch, 0);
    found[count][1] = field(rows.value.dispatch, 1);
    run(rows.value.dispatch, "MoveNext");
  }
  run(rows.value.dispatch, "Close");
  rlx_variant_clear(&rows);
  return count;
}

int main(int argc, char** argv) {
  int32_t found[100][2];
  void* object = NULL;
  if (argc != 5) {
    fprintf(stderr, "usage: board STATION-FOLDER STATION-NAME YYYY-MM-DD HH:MM\n");
    return 2;
  }
  if (rlx_create_object("Ravelinox.cmdl1", &dispatch_id, &object) < 0) {
    fprintf(stderr, "board: Ravelinox.cmdl1 is not registered, or its library does not load\n");
    return 1;
  }
  rlx_dispatch* engine = (rlx_dispatch*)object;
  const int32_t now = start(engine, argv);
  const int count = departures(engine, argv[2], now, found, 100);
  for (int at = 0; at < count; ++at) print_train(engine, found[at][0], found[at][1]);
  run(engine, "Disconnetti_DB");
  engine->slots->Release(engine);
  return 0;
}
