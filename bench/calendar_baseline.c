/* The events of one week in the calendars c0 to c9, as a program on the same library asks for them: prints
   the milliseconds of each round, by the clock and of the processor, and how many events the last one found.
 */

#include <libecal/libecal.h>

#include <stdio.h>
#include <stdlib.h>
#include <time.h>

enum { calendars = 10 };

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

static int week(ECalClient** clients, const char* query) {
    int found = 0;
    GError* error = NULL;
    for (int each = 0; each < calendars; ++each) {
        GSList* list = NULL;
        e_cal_client_get_object_list_sync(clients[each], query, &list, NULL, &error);
        check(error);
        for (GSList* node = list; node; node = node->next)
            if (i_cal_component_get_summary(node->data) && i_cal_component_get_uid(node->data)) ++found;
        g_slist_free_full(list, g_object_unref);
    }
    return found;
}

int main(int count, char** arguments) {
    if (count != 4) return 2;
    const int rounds = atoi(arguments[1]);
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
    char query[200];
    snprintf(query, sizeof query, "(occur-in-time-range? (make-time \"%s\") (make-time \"%s\"))",
             arguments[2], arguments[3]);
    int found = week(clients, query);
    for (int round = 0; round < rounds; ++round) {
        const double wall = milliseconds(CLOCK_MONOTONIC);
        const double processor = milliseconds(CLOCK_PROCESS_CPUTIME_ID);
        found = week(clients, query);
        printf("%f %f\n", milliseconds(CLOCK_MONOTONIC) - wall,
               milliseconds(CLOCK_PROCESS_CPUTIME_ID) - processor);
    }
    printf("%d\n", found);
    return 0;
}
