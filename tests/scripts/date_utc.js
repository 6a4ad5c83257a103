// Dates in UTC: construction, the one text pattern, getters, setters and the helpers' arithmetic.
print(new Date(NaN).toString() + " " + new Date(1 / 0).toUTCString() + " " + new Date(8.64e15 + 1).getTime() + " " + new Date(8.64e15).toUTCString());
print(new Date(0).toUTCString() + " " + new Date(0).toGMTString() + " " + new Date(0) + " " + new Date(0).toString());
print(new Date(2000, 0, 1).getDate() + " " + new Date(99, 0).getFullYear() + " " + new Date(99, 0).getYear() + " " + new Date(2000, 0).getYear());
print(new Date("2000-01-01").toString() + " " + Date.parse("01/02/2000 03:04:05") + " " + Date.parse("toLocaleString") + " " + Date.parse(new Date(0).toLocaleString()));
print(Date.parse("31/12/1999 23:59:59") + " " + Date.parse("32/01/2000 00:00:00") + " " + Date.parse("01/13/2000 00:00:00") + " " + Date.parse("01/01/2000 24:00:00") + " " + Date.parse(" 01/01/2000 00:00:00"));
print(Date.UTC(2000, 1, 29, 12) + " " + Date.UTC(1969, 11, 31, 23, 59, 59, 999) + " " + Date.UTC(2000, 14, 1) + " " + Date.UTC(2000, 0, 0));
var leap = new Date(Date.UTC(2000, 1, 29));
print(leap.toUTCString() + " " + leap.getUTCDay() + " " + leap.getUTCMonth() + " " + leap.getTimezoneOffset());
var old = new Date(Date.UTC(-1, 0, 1));
print(old.toUTCString() + " " + new Date(Date.UTC(1600, 1, 29, 1, 2, 3)).toUTCString() + " " + new Date(-62198755200000).toUTCString());

// Getters, local and UTC alike here.
var d = new Date(2020, 5, 15, 10, 20, 30, 400);
print(d.getFullYear() + " " + d.getMonth() + " " + d.getDate() + " " + d.getDay() + " " + d.getHours() + " " + d.getMinutes() + " " + d.getSeconds() + " " + d.getMilliseconds() + " " + d.getTime());
print(d.getUTCFullYear() + " " + d.getUTCMonth() + " " + d.getUTCDate() + " " + d.getUTCDay() + " " + d.getUTCHours() + " " + d.getUTCMinutes() + " " + d.getUTCSeconds() + " " + d.getUTCMilliseconds() + " " + d.valueOf());

// Setters: missing arguments keep their fields; overflow rolls into the next unit.
d.setMonth(11, 31);
print(d.toString() + " " + d.getMilliseconds());
print(d.setHours(25) + " " + d);
d.setMinutes(0, 0, 5);
d.setSeconds(61);
print(d + " " + d.getMilliseconds() + " " + d.setMilliseconds(999) + " " + d.setDate(0) + " " + d);
d.setUTCFullYear(2021, 1, 29);
print(d.toUTCString());
d.setUTCHours(0, 0, 0, 0);
d.setUTCMinutes(90);
d.setUTCSeconds(30);
d.setUTCMilliseconds(1);
d.setUTCDate(1);
d.setUTCMonth(0);
print(d.toUTCString() + " " + d.getUTCMilliseconds());
print(d.setTime(86400000) + " " + d + " " + d.setTime("x") + " " + d + " " + d.setTime(8.64e15 + 1));
var y = new Date(2000, 0, 1);
y.setYear(99);
print(y.getFullYear() + " " + y.setYear(2005) + " " + y.getYear() + " " + y.setYear(NaN) + " " + y.getFullYear());
var n = new Date(NaN);
n.setFullYear(2001);
print(n + " " + new Date(NaN).setMonth(1) + " " + new Date(NaN).getDay());
n.setYear(50);
print(n);

// A date in arithmetic is a number: valueOf comes first.
print(new Date(5) + 1 + " " + (new Date(10) - new Date(4)) + " " + typeof Date() + " " + (Date().length == 19));
print(Date.length + " " + Date.prototype.setHours.length + " " + Date.UTC.length + " " + Date.prototype.toString());
//---
Date.prototype.getTime.call;
var o = new Object();
o.getTime = Date.prototype.getTime;
o.getTime();
