// Local time round trips in a zone east of Greenwich with daylight saving (run with TZ=Europe/Paris).
function trip(text) {
    var t = Date.parse(text);
    var d = new Date(t);
    return text + " -> " + d.toString() + " utc " + d.toUTCString() + " offset " + d.getTimezoneOffset();
}
print(trip("15/01/2021 12:00:00"));
print(trip("15/07/2021 12:00:00"));
print(trip("28/03/2021 01:59:59"));
print(trip("28/03/2021 03:00:00"));
print(trip("31/10/2021 04:00:00"));
print(trip("01/01/1970 00:00:00"));
print(trip("29/02/2000 23:30:00"));

// The constructor takes local fields; UTC fields come from the instant.
var d = new Date(2021, 6, 15, 0, 30);
print(d + " " + d.toUTCString() + " " + d.getDate() + " " + d.getUTCDate() + " " + d.getHours() + " " + d.getUTCHours());
d.setHours(23);
print(d + " " + d.toUTCString());
d.setUTCHours(23);
print(d + " " + d.toUTCString() + " " + d.getDay() + " " + d.getUTCDay());
var winter = new Date(2021, 0, 1);
print(winter.getTimezoneOffset() + " " + new Date(2021, 6, 1).getTimezoneOffset() + " " + new Date(0).toString() + " " + new Date(0).getHours());
print(new Date(Date.UTC(2021, 2, 28, 1)).toString() + " " + new Date(Date.UTC(2021, 2, 28, 0, 59)).toString());
