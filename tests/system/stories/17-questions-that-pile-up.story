# An instrument that sends by itself while no question is answered: at most two questions are open, and what comes
# meanwhile waits outside of the form until one of them is answered.
$ mkdir -p Quorin && printf '[Settings]\nComPort=Com1\n' > settings.ini
$ printf 'NAME|INFFILE\nMoisture Meter|moisture.txt\n' > Quorin/drivers.txt
$ printf 'DRIVER|FILE|DATE|ALIAS\nMoisture Meter|qrn0001.txt|20070301|\n' > Quorin/qrnctrl.txt
$ printf 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nMoisture|1||Moisture|||||\n' > Quorin/moisture.txt
$ quorin-console --strict
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 500
{"done":"tick"}
> receive "[BLob]\r\n[CONNECT \"QI-0001\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1100
{"event":"status","text":"Decoding Result"}
{"event":"status","text":null}
{"done":"tick"}
> receive "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"1\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1100
{"event":"status","text":"Decoding Result"}
{"event":"tone","frequency":1046,"duration":250}
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"tick"}
# The second reading opens a question, and the third one opens the same question again, above it.
> receive "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"2\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
> tick 1100
{"event":"status","text":"Decoding Result"}
{"event":"box","text":"Replace: \r\n1 %\r\nWith:\r\n2 %?","buttons":"yesno","icon":"none","title":"Quorin"}
>> receive "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"3\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
>> tick 1100
{"event":"status","text":"Decoding Result"}
{"event":"box","text":"Replace: \r\n1 %\r\nWith:\r\n2 %?","buttons":"yesno","icon":"none","title":"Quorin"}
# The later readings open no box, for an hour.
>>> receive "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"4\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
>>> tick 1100
{"done":"tick"}
>>> receive "[BLob]\r\n[ORIGIN \"QI-0001\"]\r\n[RESULT_TYPE \"Moisture\"]\r\n[RESULT_VALUE \"5\"]\r\n[RESULT_UNIT \"%\"]\r\n[/BLob]\r\n"
{"done":"receive"}
>>> tick 3600000
{"done":"tick"}
>>> show
      Bluetooth :-)                          1/1
    ----------------------------+- the newer of two --+-----------------------------
    > Moisture                  | Replace:            |
    ** Decoding Result **       | 1 %                 |
                                | With:               |
                                | 2 %?                |
                                |                     |
                                |  [ Yes ]   [ No ]   |
                                +---------------------+
    
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
# After the newer question is answered, the one about the third reading opens, which came with it.
>>> answer no
{"done":"answer"}
{"event":"tone","frequency":369,"duration":300}
{"event":"box","text":"Replace: \r\n1 %\r\nWith:\r\n3 %?","buttons":"yesno","icon":"none","title":"Quorin"}
>>> answer no
{"done":"answer"}
{"event":"tone","frequency":369,"duration":300}
{"event":"status","text":null}
{"done":"tick"}
# Now one box is open, and what waited is read as one text. The hour was not a sleep of the device: the link is open.
>> tick 1100
{"event":"status","text":"Decoding Result"}
{"event":"box","text":"Replace: \r\n1 %\r\nWith:\r\n4 %?","buttons":"yesno","icon":"none","title":"Quorin"}
>>> answer no
{"done":"answer"}
{"event":"tone","frequency":369,"duration":300}
{"event":"box","text":"Replace: \r\n1 %\r\nWith:\r\n5 %?","buttons":"yesno","icon":"none","title":"Quorin"}
>>> answer no
{"done":"answer"}
{"event":"tone","frequency":369,"duration":300}
{"event":"status","text":null}
{"done":"tick"}
>> answer no
{"done":"answer"}
{"event":"tone","frequency":369,"duration":300}
{"done":"tick"}
> tick 3000
{"done":"tick"}
> show
      Bluetooth :-)                          1/1
    --------------------------------------------------------------------------------
    > Moisture                               1 %
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> choose Close
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> quit
{"done":"quit"}
$ cat Quorin/qrn0001.txt
Moisture
1 %
