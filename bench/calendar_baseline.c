/* calendar-baseline ROUNDS FROM TO MODE: the events of a time in the calendars c0 to c9, as a program on the
   same library asks for them. In the mode "range" it asks for that time, which misses occurrences that were
   moved into it; in the mode "series" it also has the library expand each series. Prints the milliseconds of
   each round, by the clock and of the processor, and how many events the last one found. */

#include <libecal/libecal.h>

#include <stdio.h>
#include <stdlib.h>
#include <time.h>

enum { calendars = 10 };

struct question {
    const char* from;
    const char* to;
    gboolean with_series;
};

static double milliseconds(clockid_t clock) {
    struct timespec time;
    clock_gettime(clock, &time);
    return (double)time.tv_sec * 1e3 + (double)time.tv_nsec / 1e6;
}

static void check(const GError* error) {
    if (!error) return;
    fprintf(stderr, "%s\n", error->message);
    exit(1);
}

static gboolean count(ICalComponent* component, ICalTime* start, ICalTime* end, gpointer found,
                      GCancellable* cancellable, GError** error) {
    (void)component, (void)start, (void)end, (void)cancellable, (void)error;
    ++*(int*)found;
    return TRUE;
}

static GSList* objects(ECalClient* client, const char* query) {
    GSList* list = NULL;
    GError* error = NULL;
    e_cal_client_get_object_list_sync(client, query, &list, NULL, &error);
    check(error);
    return list;
}

static time_t moment(const char* text) {
    ICalTime* time = i_cal_time_new_from_string(text);
    const time_t seconds = i_cal_time_as_timet(time);
    g_object_unref(time);
    return seconds;
}

static int single_events(ECalClient* client, const struct question* asked) {
    int found = 0;
    char query[200];
    snprintf(query, sizeof query, "(occur-in-time-range? (make-time \"%s\") (make-time \"%s\"))", asked->from,
             asked->to);
    GSList* list = objects(client, query);
    for (GSList* node = list; node; node = node->next)
        if (!asked->with_series || !e_cal_util_component_has_recurrences(node->data)) ++found;
    g_slist_free_full(list, g_object_unref);
    return found;
}

static int occurrences(ECalClient* client, const struct question* asked) {
    int found = 0;
    GSList* list = objects(client, "(has-recurrences?)");
    for (GSList* node = list; node; node = node->next)
        e_cal_client_generate_instances_for_object_sync(client, node->data, moment(asked->from),
                                                        moment(asked->to), NULL, count, &found);
    g_slist_free_full(list, g_object_unref);
    return found;
}

static int week(ECalClient** clients, const struct question* asked) {
    int found = 0;
    for (int each = 0; each < calendars; ++each) {
        found += single_events(clients[each], asked);
        if (asked->with_series) found += occurrences(clients[each], asked);
    }
    return found;
}

int main(int argument_count, char** arguments) {
    if (argument_count != 5) return 2;
    const struct question asked = {arguments[2], arguments[3], g_str_equal(arguments[4], "series")};
    GError* error = NULL;
    ESourceRegistry* registry = e_source_registry_new_sync(NULL, &error);
    check(error);
    ECalClient* clients[calendars];
    for (int each = 0; each < calendars; ++each) {
        char id[8];
        snprintf(id, sizeof id, "c%d", each);
        ESource* source = e_source_registry_ref_source(registry, id);
        clients[each] = E_CAL_CLIENT(
            e_cal_client_connect_sync(source, E_CAL_CLIENT_SOURCE_TYPE_EVENTS, (guint32)-1, NULL, &error));
        check(error);
        g_object_unref(source);
    }
    int found = week(clients, &asked);
    const int rounds = atoi(arguments[1]);
    for (int round = 0; round < rounds; ++round) {
        const double wall = milliseconds(CLOCK_MONOTONIC);
        const double processor = milliseconds(CLOCK_PROCESS_CPUTIME_ID);
        found = week(clients, &asked);
        printf("%f %f\n", milliseconds(CLOCK_MONOTONIC) - wall,
               milliseconds(CLOCK_PROCESS_CPUTIME_ID) - processor);
    }
    printf("%d\n", found);
    return 0;
}
