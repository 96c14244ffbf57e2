SELECT ISNULL(Copy.CopySize, -1), DATEDIFF(second, '1970-01-01 00:00:00', Wg.CreatedDateTime), DATEADD(SECOND, 5, ?) FROM SLP_MAIN.SLP_WorkGroup Wg -- ENDIF
/* IF */